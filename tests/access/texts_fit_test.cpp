// No text is cut off: in both languages, in the fonts of usual desktops, at several scales.
#include "access/access_bench.h"
#include "access/english.h"
#include "access/text_room.h"

#include <QDialog>
#include <QTabBar>

#include <memory>
#include <string>
#include <tuple>

using namespace kestrel::test;

namespace {

enum class Language
{
    Chinese,
    English
};

struct Face
{
    const char* family;
    int points;
};

using Look = std::tuple<Language, Face>;

/// The language and the font of a test, before any dialog is made.
class LookInForce : public testing::WithParamInterface<Look>
{
protected:
    LookInForce() : m_font(QApplication::font())
    {
        const auto& [language, face] = GetParam();
        if (language == Language::English) {
            m_english = std::make_unique<English>();
        }
        QApplication::setFont(QFont(QString::fromUtf8(face.family), face.points));
    }
    ~LookInForce() override { QApplication::setFont(m_font); }
    Q_DISABLE_COPY_MOVE(LookInForce)

private:
    QFont m_font;
    std::unique_ptr<English> m_english;
};

class TextsFit : public LookInForce, public Access
{
};

/// The tab that is chosen is bold, by the form's style sheet.
void expectTabsToFit(const QTabWidget& pages)
{
    const QTabBar& bar = *pages.tabBar();
    QFont bold = bar.font();
    bold.setPixelSize(16);
    bold.setBold(true);
    for (int index = 0; index < bar.count(); ++index) {
        EXPECT_TRUE(!pages.isTabEnabled(index) ||
                    bar.tabRect(index).width() - 10 >=
                        QFontMetrics(bold).horizontalAdvance(bar.tabText(index)))
            << bar.tabText(index).toStdString();
    }
    EXPECT_LE(bar.tabRect(bar.count() - 1).right(), pages.width());
}

std::string nameOf(const testing::TestParamInfo<Look>& info)
{
    const auto& [language, face] = info.param;
    const QString family = QString::fromUtf8(face.family).remove(QLatin1Char(' '));
    return (language == Language::English ? "English" : "Chinese") + family.toStdString() +
           std::to_string(face.points);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Looks, TextsFit,
    testing::Combine(testing::Values(Language::Chinese, Language::English),
                     testing::Values(Face{"DejaVu Sans", 9}, Face{"DejaVu Sans", 11},
                                     Face{"Noto Sans CJK SC", 10}, Face{"Noto Sans CJK SC", 11})),
    nameOf);

TEST_P(TextsFit, OnEveryPageWithEveryRow)
{
    destroy();
    DialogProbe dialog;
    dialog.show();
    for (const char* hidden : {"cachemode_memory", "cachemode_pagecount", "preview"}) {
        child<QWidget>(dialog, hidden).show();
    }
    auto& pages = child<QTabWidget>(dialog, "tabWidget");
    int texts = 0;
    int labels = 0;
    for (int index = 0; index < pages.count(); ++index) {
        SCOPED_TRACE(pages.tabText(index).toStdString());
        pages.setCurrentIndex(index);
        settle();
        texts += expectTextsToFit(dialog);
        labels += expectLabelsToBePaintedWhole(dialog);
        expectTabsToFit(pages);
    }
    EXPECT_GT(texts, 200);
    EXPECT_GT(labels, 50);
}

TEST_P(TextsFit, OnEveryPageOfAScannerWithEverything)
{
    show();
    int texts = 0;
    int labels = 0;
    onEachPage([&](QWidget&) {
        texts += expectTextsToFit(dialog());
        labels += expectLabelsToBePaintedWhole(dialog());
        expectTabsToFit(pages());
    });
    EXPECT_GT(texts, 200);
    EXPECT_GT(labels, 50);
}

TEST_P(TextsFit, InTheSmallDialogs)
{
    for (const char* name : {"EditTemplate", "AddUserTemplate", "CustomResolution"}) {
        SCOPED_TRACE(name);
        auto& small = child<QDialog>(dialog(), name);
        small.setModal(false);
        small.show();
        settle();
        EXPECT_GE(expectTextsToFit(small), 3);
        EXPECT_GE(expectLabelsToBePaintedWhole(small), 1);
    }
}
