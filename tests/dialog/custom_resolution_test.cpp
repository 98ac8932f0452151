// The custom resolution from its dialog to the scanner.
#include "config_manager.h"

#include "dialogs/customresolution.h"

#include <QLabel>
#include <QSignalSpy>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const char* const kAdd = "add";
const char* const kModify = "modify";
const char* const kRemove = "remove";
const char* const kCancel = "cancel";

class CustomResolutionEntry : public TemplatesBench
{
protected:
    CustomResolutionEntry() { bind(m_scanner); }

    CustomResolution& small() { return *dialog().custom_resolution; }
    QPushButton& button(const char* name) { return child<QPushButton>(small(), name); }
    QSpinBox& number() { return child<QSpinBox>(small(), "spinBox_resolution"); }

    /// Opens the small dialog with its button, enters a number and leaves by a button.
    void use(const char* name, int dpi = 0)
    {
        const WhenShown user(small(), [this, name, dpi] {
            if (dpi != 0) {
                number().setValue(dpi);
            }
            EXPECT_TRUE(button(name).isVisible()) << name;
            press(button(name));
            EXPECT_FALSE(small().isVisible()) << name;
            small().close();
        });
        press(get<QAbstractButton>("customresolution"));
    }

    std::string sentResolution()
    {
        m_scanner.clearJournal();
        setAllParamBySettingUI(dialog().host());
        const auto sets = m_scanner.journal().setsOf("resolution");
        return sets.size() == 1 ? sets[0] : std::to_string(sets.size()) + " values";
    }

    int resolution() { return getCurrentResolution(dialog().host()); }

    const QStringList fixed{QStringLiteral("75"),  QStringLiteral("100"), QStringLiteral("150"),
                            QStringLiteral("200"), QStringLiteral("300"), QStringLiteral("400"),
                            QStringLiteral("600")};
};

} // namespace

TEST_F(CustomResolutionEntry, FixedResolutionsAreTheirNumbers)
{
    ASSERT_EQ(items(resolutions()), fixed);
    EXPECT_EQ(resolution(), 200);
    for (int i = 0; i < fixed.size(); ++i) {
        resolutions().setCurrentIndex(i);
        EXPECT_EQ(resolution(), fixed.at(i).toInt());
        EXPECT_EQ(sentResolution(), fixed.at(i).toStdString());
    }
}

TEST_F(CustomResolutionEntry, AddingAppendsAndSelectsNothing)
{
    use(kAdd, 250);
    EXPECT_EQ(items(resolutions()), fixed + QStringList(QStringLiteral("custom-250")));
    EXPECT_EQ(resolutions().currentIndex(), 3);
    EXPECT_EQ(resolution(), 200);
    EXPECT_TRUE(resolutions().itemIcon(7).isNull());
    EXPECT_FALSE(resolutions().itemData(7).isValid());
}

TEST_F(CustomResolutionEntry, TheChosenNumberReachesHostAndScanner)
{
    for (const int dpi : {72, 250, 600}) {
        use(resolutions().count() == 8 ? kModify : kAdd, dpi);
        resolutions().setCurrentIndex(7);
        EXPECT_EQ(resolution(), dpi);
        EXPECT_EQ(sentResolution(), std::to_string(dpi));
    }
}

TEST_F(CustomResolutionEntry, ModifyingReplacesTheEntryAndKeepsTheSelection)
{
    use(kAdd, 250);
    resolutions().setCurrentIndex(7);
    use(kModify, 320);
    EXPECT_EQ(items(resolutions()), fixed + QStringList(QStringLiteral("custom-320")));
    EXPECT_EQ(resolutions().currentIndex(), 7);
    EXPECT_EQ(resolution(), 320);
    resolutions().setCurrentIndex(1);
    use(kModify, 330);
    EXPECT_EQ(resolutions().itemText(7), QStringLiteral("custom-330"));
    EXPECT_EQ(resolutions().currentIndex(), 1);
}

TEST_F(CustomResolutionEntry, RemovingTheChosenEntryLeavesTheToolkitsChoice)
{
    use(kAdd, 250);
    resolutions().setCurrentIndex(7);
    use(kRemove);
    EXPECT_EQ(items(resolutions()), fixed);
    // Not 200 dpi: the list takes the neighbour.
    EXPECT_EQ(resolutions().currentIndex(), 6);
    EXPECT_EQ(resolution(), 600);
    EXPECT_EQ(sentResolution(), "600");
}

TEST_F(CustomResolutionEntry, RemovingAnotherEntryKeepsTheSelection)
{
    use(kAdd, 250);
    resolutions().setCurrentIndex(1);
    use(kRemove);
    EXPECT_EQ(items(resolutions()), fixed);
    EXPECT_EQ(resolutions().currentIndex(), 1);
}

TEST_F(CustomResolutionEntry, RemovingWithoutAnEntryChangesNothing)
{
    dialog().getCustomResolution(QString());
    EXPECT_EQ(items(resolutions()), fixed);
    EXPECT_EQ(resolutions().currentIndex(), 3);
}

TEST_F(CustomResolutionEntry, CancellingChangesNothing)
{
    use(kCancel, 250);
    EXPECT_EQ(items(resolutions()), fixed);
    use(kAdd, 250);
    use(kCancel, 300);
    EXPECT_EQ(resolutions().itemText(7), QStringLiteral("custom-250"));
}

TEST_F(CustomResolutionEntry, TheDialogOffersWhatCanBeDone)
{
    {
        const WhenShown user(small(), [this] {
            EXPECT_TRUE(button(kAdd).isVisible());
            EXPECT_FALSE(button(kModify).isVisible());
            EXPECT_FALSE(button(kRemove).isEnabled());
            EXPECT_TRUE(small().isModal());
            press(button(kCancel));
        });
        press(get<QAbstractButton>("customresolution"));
    }
    use(kAdd, 250);
    const WhenShown user(small(), [this] {
        EXPECT_FALSE(button(kAdd).isVisible());
        EXPECT_TRUE(button(kModify).isVisible());
        EXPECT_TRUE(button(kRemove).isEnabled());
        press(button(kCancel));
    });
    press(get<QAbstractButton>("customresolution"));
}

TEST_F(CustomResolutionEntry, TheDialogFollowsAnEntryThatCameFromTheFile)
{
    store(QStringLiteral("L/custom_resolution"), QStringLiteral("custom-123"));
    store(QStringLiteral("L/resolution"), QStringLiteral("7"));
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(resolution(), 123);
    use(kModify, 124);
    EXPECT_EQ(resolution(), 124);
    store(QStringLiteral("L/custom_resolution"), QString());
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(items(resolutions()), fixed);
    use(kAdd, 90);
    EXPECT_EQ(resolutions().itemText(7), QStringLiteral("custom-90"));
}

TEST_F(CustomResolutionEntry, TheRangeIsTheScanners)
{
    for (const int maximum : {1200, 600, 300}) {
        FakeScanner scanner = fullScanner();
        scanner.option("resolution").range(50, maximum, 1);
        bind(scanner);
        EXPECT_EQ(child<QLabel>(small(), "label").text(),
                  QStringLiteral("[ 范围：72 ～ %1 dpi ]").arg(maximum));
        EXPECT_EQ(number().minimum(), 72);
        EXPECT_EQ(number().maximum(), maximum);
    }
    use(kAdd, 5000);
    EXPECT_EQ(resolutions().itemText(7), QStringLiteral("custom-300"));
}

TEST_F(CustomResolutionEntry, BindingAnotherScannerEndsTheQuestion)
{
    for (const char* const name : {kAdd, kModify, kRemove}) {
        FakeScanner other = fullScanner();
        bind(other, "ScannerB");
        if (name != kAdd) {
            use(kAdd, 250);
        }
        const WhenShown user(small(), [this, name] {
            bind(m_scanner);
            dialog().getCustomResolution(QStringLiteral("custom-300"));
            EXPECT_FALSE(small().isVisible());
            if (small().isVisible()) {
                number().setValue(120);
                press(button(name));
            }
        });
        press(get<QAbstractButton>("customresolution"));
        EXPECT_EQ(items(resolutions()), fixed + QStringList(QStringLiteral("custom-300"))) << name;
    }
}

TEST_F(CustomResolutionEntry, TextsThatAreNoNumberAreZero)
{
    for (const auto& [text, dpi] :
         {std::pair("custom-abc", 0), std::pair("250", 0), std::pair("custom-", 0),
          std::pair("Custom-250", 0), std::pair("custom-250dpi", 0), std::pair("custom-1-2", 0),
          std::pair("custom-12custom-34", 12), std::pair("x custom-77", 77),
          std::pair("custom- 88", 88), std::pair("custom-0250", 250)}) {
        dialog().getCustomResolution(QString::fromUtf8(text));
        ASSERT_EQ(resolutions().count(), 8);
        resolutions().setCurrentIndex(7);
        EXPECT_EQ(resolution(), dpi) << text;
    }
}

TEST_F(CustomResolutionEntry, LoadingSettlesTheEntryBeforeItIsSelected)
{
    struct Row
    {
        const char* before; ///< the entry that is there; empty: none
        const char* stored;
        QString after;
    };
    for (const Row& row : {Row{"", "custom-250", QStringLiteral("custom-250")},
                           Row{"custom-250", "custom-250", QStringLiteral("custom-250")},
                           Row{"custom-250", "custom-300", QStringLiteral("custom-300")},
                           Row{"custom-250", "CUSTOM-250", QStringLiteral("CUSTOM-250")},
                           Row{"", "自订", QStringLiteral("自订")}}) {
        bind(m_scanner);
        dialog().getCustomResolution(QString::fromUtf8(row.before));
        resolutions().setCurrentIndex(2);
        store(QStringLiteral("L/custom_resolution"), QString::fromUtf8(row.stored));
        store(QStringLiteral("L/resolution"), QStringLiteral("7"));
        dialog().loadConfig(QStringLiteral("L"));
        EXPECT_EQ(items(resolutions()), fixed + QStringList(row.after));
        EXPECT_EQ(resolutions().currentIndex(), 7);
        dialog().getCustomResolution(QString());
    }
}

TEST_F(CustomResolutionEntry, AStoredEmptyTextRemovesTheEntryAndAMissingOneDoesNot)
{
    dialog().getCustomResolution(QStringLiteral("custom-250"));
    resolutions().setCurrentIndex(2);
    store(QStringLiteral("L/brightness"), QStringLiteral("1"));
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(resolutions().count(), 8);
    store(QStringLiteral("L/custom_resolution"), QString());
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(items(resolutions()), fixed);
    EXPECT_EQ(resolutions().currentIndex(), 2);
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(items(resolutions()), fixed);
}

TEST_F(CustomResolutionEntry, ASelectedEntryThatIsGoneLeavesTheSelection)
{
    resolutions().setCurrentIndex(2);
    store(QStringLiteral("L/custom_resolution"), QString());
    store(QStringLiteral("L/resolution"), QStringLiteral("7"));
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(resolutions().currentIndex(), 2);
}

TEST_F(CustomResolutionEntry, EveryTemplateHasItsOwn)
{
    start({QStringLiteral("A")});
    use(kAdd, 250);
    resolutions().setCurrentIndex(7);
    ok();
    templates().setCurrentIndex(1);
    use(kModify, 400);
    ok();
    restart(m_scanner);
    EXPECT_EQ(resolution(), 400);
    EXPECT_EQ(sentResolution(), "400");
    templates().setCurrentIndex(0);
    EXPECT_EQ(resolution(), 250);
    EXPECT_EQ(sentResolution(), "250");
    press(get<QAbstractButton>("default_setting"));
    EXPECT_EQ(resolution(), 250);
}

TEST_F(CustomResolutionEntry, TheDefaultsOfAFirstBindingHaveNone)
{
    use(kAdd, 250);
    resolutions().setCurrentIndex(7);
    press(get<QAbstractButton>("default_setting"));
    EXPECT_EQ(items(resolutions()), fixed);
    EXPECT_EQ(resolution(), 200);
}
