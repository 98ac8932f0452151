// The dialog with the English catalogue: other words, the same settings.
#include "access/access_bench.h"
#include "access/english.h"
#include "access/text_room.h"
#include "support/message_boxes.h"

#include <dialogs/addusertemplate.h>
#include <dialogs/edittemplate.h>

#include <QRegularExpression>

#include <memory>
#include <set>
#include <string>
#include <utility>

using namespace kestrel::test;

namespace {

/// What comes out of a session: everything that was set, with its bytes, and the file.
struct Outcome
{
    std::vector<std::pair<std::string, std::vector<unsigned char>>> sent;
    QByteArray file;
};

class Session : public DialogTest
{
public:
    /// Chooses the item of this index, counted from the end, in every combo box that can be used.
    void chooseInAllLists(int fromEnd)
    {
        for (QComboBox* list : dialog().findChildren<QComboBox*>()) {
            if (list->count() > fromEnd && list->objectName() != QLatin1String("usertemplate")) {
                list->setCurrentIndex(list->count() - 1 - fromEnd);
            }
        }
    }

    void addTemplate(const QString& name)
    {
        auto& manager = *dialog().edit_template;
        auto& names = child<AddUserTemplate>(manager, "AddUserTemplate");
        const WhenShown naming(names, [&] {
            child<QLineEdit>(names, "lineEdit").setText(name);
            child<QAbstractButton>(names, "pushButton").click();
        });
        const WhenShown managing(manager, [&] {
            child<QAbstractButton>(manager, "template_add").click();
            child<QAbstractButton>(manager, "template_reset_2").click();
        });
        button("template_setting").click();
    }

    Outcome run(FakeScanner scanner)
    {
        bind(scanner);
        show();
        for (int fromEnd = 0; fromEnd < 3; ++fromEnd) {
            chooseInAllLists(fromEnd);
            for (const char* name : {"ultrasonic", "despeckle", "rear_bw", "center_alignment"}) {
                button(name).click();
            }
            dialog().setAllParam();
            addTemplate(QStringLiteral("T%1").arg(fromEnd));
            combo("usertemplate").setCurrentIndex(fromEnd);
            button("sure").click();
            show();
        }
        button("default_setting").click();
        dialog().setAllParam();
        button("cancel").click();
        dialog().setAllParam();
        Outcome outcome;
        for (const Call& call : scanner.journal().of(CallKind::Set)) {
            outcome.sent.emplace_back(call.name, call.raw);
        }
        destroy();
        outcome.file = dir().read(QStringLiteral("ScannerA.ini"));
        return outcome;
    }

private:
    void TestBody() override {}
};

Outcome outcomeOn(FakeScanner scanner)
{
    return std::make_unique<Session>()->run(std::move(scanner));
}

bool isChinese(const QString& text)
{
    static const QRegularExpression han(QStringLiteral("\\p{Han}"));
    return text.contains(han);
}

class Catalogue : public testing::Test
{
protected:
    English m_english;
};

} // namespace

TEST(CatalogueInForce, ChangesNeitherWhatIsSentNorWhatIsStored)
{
    const std::pair<const char*, FakeScanner (*)()> scanners[] = {
        {"full", &fullScanner},
        {"feeder", &feederScanner},
        {"flatbed", &flatbedScanner},
        {"two paths", &flatbedAndFeederScanner}};
    for (const auto& [name, make] : scanners) {
        SCOPED_TRACE(name);
        const Outcome chinese = outcomeOn(make());
        const English english;
        const Outcome translated = outcomeOn(make());
        EXPECT_GT(chinese.sent.size(), 200U);
        EXPECT_GT(chinese.file.size(), 5000);
        EXPECT_EQ(translated.sent, chinese.sent);
        EXPECT_EQ(translated.file, chinese.file);
    }
}

TEST_F(Catalogue, FormSpeaksEnglishExceptWhatComesFromScannerAndFile)
{
    DialogProbe dialog;
    // Filled at run time from tables that are compared with, or stored in the settings file.
    const std::set<QString> untranslated{"usertemplate"};
    int texts = 0;
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        if (name.isEmpty() || untranslated.count(name) != 0 ||
            untranslated.count(widget->parent()->objectName()) != 0 ||
            qobject_cast<const QTextEdit*>(widget) != nullptr) {
            continue;
        }
        QStringList shown = textsOf(*widget);
        shown << widget->accessibleName() << widget->property("title").toString()
              << widget->windowTitle();
        for (const QString& text : shown) {
            EXPECT_FALSE(isChinese(text)) << name.toStdString() << ": " << text.toStdString();
            texts += text.isEmpty() ? 0 : 1;
        }
    }
    EXPECT_GT(texts, 350);
    const auto& pages = child<QTabWidget>(dialog, "tabWidget");
    for (int index = 0; index < pages.count(); ++index) {
        EXPECT_FALSE(isChinese(pages.tabText(index)));
    }
}

TEST_F(Catalogue, TheEntryThatStandsInTheFileKeepsItsName)
{
    DialogProbe dialog;
    EXPECT_EQ(child<QComboBox>(dialog, "usertemplate").itemText(0), QStringLiteral("自订"));
    EXPECT_EQ(child<QComboBox>(*dialog.edit_template, "usertemplate").itemText(0),
              QStringLiteral("自订"));
}
