// docs/host-guide.md: how a host has the vendor library's counters shown, with nothing but what is
// installed.
#include "support/user.h"

#include <kestrelsettingui.h>

#include <QDialog>
#include <QTextEdit>

#include <gtest/gtest.h>

#include <memory>

using namespace kestrel::test;

class KestrelSettingUI // as far as a host needs it
{
public:
    void setScannerInfo();
};

TEST(ScannerInfo, IsWrittenAnewByAMemberOfTheExportedClass)
{
    void* const ui = creatKestrelSetUI(nullptr);
    const std::unique_ptr<QDialog> dialog(static_cast<QDialog*>(ui));
    auto& tab = child<QTextEdit>(*dialog, "scanner_info");
    const QString text = tab.toPlainText();
    ASSERT_TRUE(text.contains(QStringLiteral("内存容量：")));
    tab.clear();
    static_cast<KestrelSettingUI*>(ui)->setScannerInfo();
    EXPECT_EQ(tab.toPlainText(), text);
}
