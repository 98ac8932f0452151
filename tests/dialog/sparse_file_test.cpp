// Settings files that say little, and scanners that say nothing: what the dialog still keeps.
#include "config_manager.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

class SparseFile : public TemplatesBench
{
};

} // namespace

TEST_F(SparseFile, WithAVersionAloneTakesWhatIsConfirmed)
{
    prepare({{QStringLiteral("ScannerAconfig_version/config_version"), QStringLiteral("102")}});
    restart(m_scanner);
    setBrightness(33);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("33"));
}

TEST_F(SparseFile, WithoutAnOrientationLiesAsAnA3ScannerSetsIt)
{
    start({});
    ScannerModel model;
    model.width = 305.0;
    model.feederHeight = 432.0;
    FakeScanner wide = makeScanner(model);
    restart(wide);
    EXPECT_TRUE(get<QAbstractButton>("horizontal_range").isChecked());
    EXPECT_FALSE(dialog().portrait);
}

// What closing brings back is what the file says: from then on it may be confirmed again.
TEST_F(SparseFile, OfAScannerThatCouldNotBeAskedIsConfirmedOnceItHasBeenLoaded)
{
    start({}, QStringLiteral("0"));
    FakeScanner mute = fullScanner();
    mute.hideCount();
    restart(mute);
    setBrightness(33);
    cancel();
    ASSERT_EQ(brightness(), 50);
    setBrightness(34);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("34"));
}

TEST_F(SparseFile, WithoutAScannerNothingIsSaidOfOne)
{
    const MessageBoxes boxes;
    dialog().scan_error(SANE_STATUS_JAMMED);
    EXPECT_TRUE(boxes.shown().empty());
}
