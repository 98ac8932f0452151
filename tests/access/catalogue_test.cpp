// The dialog with the English catalogue: other words, the same settings.
#include "access/access_bench.h"
#include "support/message_boxes.h"

#include <dialogs/addusertemplate.h>
#include <dialogs/edittemplate.h>

#include <QCheckBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStyleOption>
#include <QTabBar>
#include <QTranslator>

#include <memory>
#include <set>
#include <string>
#include <utility>

using namespace kestrel::test;

namespace {

/// The English texts are in force while it lives.
class English
{
public:
    English()
    {
        EXPECT_TRUE(m_translator.load(QStringLiteral(KESTREL_CATALOGUE)));
        QCoreApplication::installTranslator(&m_translator);
    }

private:
    QTranslator m_translator;
};

/// The font of the application while it lives.
class Font
{
public:
    Font(const char* family, int points) : m_before(QApplication::font())
    {
        QApplication::setFont(QFont(QString::fromUtf8(family), points));
    }
    ~Font() { QApplication::setFont(m_before); }
    Q_DISABLE_COPY_MOVE(Font)

private:
    QFont m_before;
};

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

/// @return the room that the widget has for its text; negative when it shows none of its own
int roomForText(const QWidget& widget)
{
    if (const auto* const check = qobject_cast<const QCheckBox*>(&widget)) {
        QStyleOptionButton option;
        option.initFrom(check);
        return check->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, check).width();
    }
    if (const auto* const radio = qobject_cast<const QRadioButton*>(&widget)) {
        QStyleOptionButton option;
        option.initFrom(radio);
        return radio->style()
            ->subElementRect(QStyle::SE_RadioButtonContents, &option, radio)
            .width();
    }
    if (const auto* const combo = qobject_cast<const QComboBox*>(&widget)) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        return combo->style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo)
            .width();
    }
    if (qobject_cast<const QLabel*>(&widget) != nullptr) {
        return widget.width();
    }
    return qobject_cast<const QPushButton*>(&widget) != nullptr ? widget.width() - 2 : -1;
}

QStringList textsOf(const QWidget& widget)
{
    if (const auto* const combo = qobject_cast<const QComboBox*>(&widget)) {
        return items(*combo);
    }
    return {widget.property("text").toString()};
}

void expectTextsToFit(const QWidget& parent)
{
    for (const QWidget* widget : parent.findChildren<QWidget*>()) {
        const int room = roomForText(*widget);
        if (room < 0 || !widget->isVisible()) {
            continue;
        }
        for (const QString& text : textsOf(*widget)) {
            EXPECT_GE(room, widget->fontMetrics().horizontalAdvance(text))
                << widget->objectName().toStdString() << ": " << text.toStdString();
        }
    }
    for (const QGroupBox* box : parent.findChildren<QGroupBox*>()) {
        EXPECT_TRUE(!box->isVisible() ||
                    box->width() >= box->fontMetrics().horizontalAdvance(box->title()) + 20)
            << box->title().toStdString();
    }
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

class CatalogueFits : public testing::TestWithParam<std::pair<const char*, int>>
{
};

INSTANTIATE_TEST_SUITE_P(Fonts, CatalogueFits,
                         testing::Values(std::pair("DejaVu Sans", 9),
                                         std::pair("Noto Sans CJK SC", 10)));

TEST_P(CatalogueFits, NoTextOfTheDialogIsCutOff)
{
    const Font font(GetParam().first, GetParam().second);
    const English english;
    DialogProbe dialog;
    dialog.show();
    auto& pages = child<QTabWidget>(dialog, "tabWidget");
    for (const char* hidden : {"cachemode_memory", "cachemode_pagecount", "preview"}) {
        child<QWidget>(dialog, hidden).show();
    }
    for (int index = 0; index < pages.count(); ++index) {
        pages.setCurrentIndex(index);
        settle();
        expectTextsToFit(dialog);
        QFont bold = pages.tabBar()->font();
        bold.setPixelSize(16);
        bold.setBold(true);
        EXPECT_TRUE(!pages.isTabEnabled(index) ||
                    pages.tabBar()->tabRect(index).width() - 10 >=
                        QFontMetrics(bold).horizontalAdvance(pages.tabText(index)))
            << index;
    }
    EXPECT_LE(pages.tabBar()->tabRect(pages.count() - 1).right(), pages.width());
}

TEST_P(CatalogueFits, NoTextOfTheSmallDialogsIsCutOff)
{
    const Font font(GetParam().first, GetParam().second);
    const English english;
    DialogProbe dialog;
    for (const char* name : {"EditTemplate", "AddUserTemplate", "CustomResolution"}) {
        auto& small = child<QDialog>(dialog, name);
        small.setModal(false);
        small.show();
        settle();
        expectTextsToFit(small);
    }
}
