// A scanner that fails while it is asked for its options: what the dialog cannot show for that
// stays as it is stored.
#include "reliability/stand_in.h"
#include "support/host.h"
#include "support/user.h"

#include <QComboBox>
#include <QDoubleSpinBox>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

const QString fileName = QStringLiteral("ScannerA.ini");

class HalfAsked : public testing::Test
{
protected:
    HalfAsked() : m_bytes(makeStoredSettings(m_folder.path())) {}

    QString stored(const char* key) const
    {
        return readSettingsFile(m_folder.file(fileName))
            .value(QStringLiteral("Office/%1").arg(QLatin1String(key)));
    }

    TempConfigDir m_folder;
    QByteArray m_bytes;
    FakeScanner m_scanner = scannerWithPicture();
};

} // namespace

TEST_F(HalfAsked, AnAreaThatDoesNotFitStaysStored)
{
    const QString width = stored("br_x");
    m_scanner.option("br-x").undescribed();
    UserSession user;
    user.bind(m_scanner.handle(), m_folder.path());
    auto& box = child<QDoubleSpinBox>(user.dialog(), "br_x");
    EXPECT_LT(box.value(), width.toDouble());
    user.ok();
    EXPECT_EQ(stored("br_x"), width);
}

TEST_F(HalfAsked, WhatTheUserChangesIsStored)
{
    m_scanner.option("br-x").undescribed();
    UserSession user;
    user.bind(m_scanner.handle(), m_folder.path());
    child<QDoubleSpinBox>(user.dialog(), "br_x").setValue(42.5);
    user.ok();
    EXPECT_EQ(stored("br_x"), QStringLiteral("42.5"));
}

TEST_F(HalfAsked, AnEmptyListStoresNothing)
{
    const QString source = stored("source");
    m_scanner.option("source").undescribed();
    UserSession user;
    user.bind(m_scanner.handle(), m_folder.path());
    EXPECT_EQ(child<QComboBox>(user.dialog(), "source").count(), 0);
    user.ok();
    EXPECT_EQ(stored("source"), source);
}

TEST_F(HalfAsked, ACountThatCannotBeReadCostsNothing)
{
    const Texts before = readSettingsFile(m_folder.file(fileName));
    m_scanner.failNth(CallKind::Get, 1, SANE_STATUS_IO_ERROR);
    UserSession user;
    user.bind(m_scanner.handle(), m_folder.path());
    user.ok();
    EXPECT_EQ(readSettingsFile(m_folder.file(fileName)), before);
}

TEST_F(HalfAsked, AskedWholeAgainTheDialogStoresWhatItShows)
{
    m_scanner.option("br-x").undescribed();
    UserSession user;
    user.bind(m_scanner.handle(), m_folder.path());
    FakeScanner narrow = scannerWithPicture();
    narrow.option("br-x").limits(0.0, 120.0);
    user.bind(narrow.handle(), m_folder.path());
    user.ok();
    EXPECT_EQ(stored("br_x"), QStringLiteral("120"));
}
