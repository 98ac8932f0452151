// docs/host-guide.md: what it says the calls send is what a scanner gets.
#include "dialog/dialog_fixture.h"

#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QFile>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

using namespace kestrel::test;

namespace {

class HostGuide : public DialogTest
{
protected:
    /// @return the list that the guide gives for a call
    static Strings listed(const char* call)
    {
        QFile file(QStringLiteral(HOST_GUIDE));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << HOST_GUIDE;
        const QString text = QString::fromUtf8(file.readAll());
        const auto mark = QStringLiteral("<!-- sent by %1 -->\n```text\n").arg(QLatin1String(call));
        EXPECT_EQ(text.count(mark), 1) << call;
        const auto begin = text.indexOf(mark) + mark.size();
        Strings lines;
        for (const QString& line : text.mid(begin, text.indexOf("```", begin) - begin)
                                       .split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            lines.push_back(line.toStdString());
        }
        return lines;
    }

    void* ui() { return dialog().host(); }
    Strings sent() const { return m_scanner.journal().sets(); }
    bool untouched() const { return m_scanner.journal().calls().empty(); }

    FakeScanner m_scanner = fullScanner();
};

} // namespace

TEST_F(HostGuide, BindingSendsWhatIsListed)
{
    bind(m_scanner);
    EXPECT_EQ(sent(), listed("initKestrelSetUI"));
    const auto calls = m_scanner.journal().calls();
    const auto reading = std::find_if(calls.begin(), calls.end(),
                                      [](const Call& call) { return call.kind == CallKind::Set; });
    // Everything is described before anything is set.
    EXPECT_GE(std::count_if(calls.begin(), reading,
                            [](const Call& call) { return call.kind == CallKind::Describe; }),
              static_cast<std::ptrdiff_t>(m_scanner.names().size()));
}

TEST_F(HostGuide, OkSendsWhatIsListedAndShowingNothing)
{
    bind(m_scanner);
    m_scanner.clearJournal();
    QTimer::singleShot(0, &dialog(), [this] {
        EXPECT_TRUE(untouched());
        button("sure").click();
    });
    showWindow(ui());
    EXPECT_EQ(sent(), listed("OK"));
}

TEST_F(HostGuide, ApplyingSendsWhatIsListed)
{
    bind(m_scanner);
    m_scanner.clearJournal();
    setAllParamBySettingUI(ui());
    EXPECT_EQ(sent(), listed("setAllParamBySettingUI"));
}

TEST_F(HostGuide, BlankPagesSendWhatIsListed)
{
    bind(m_scanner);
    m_scanner.clearJournal();
    EXPECT_TRUE(setBlankPageFunc(ui(), true));
    EXPECT_FALSE(setBlankPageFunc(ui(), true));
    EXPECT_EQ(sent(), listed("setBlankPageFunc"));
}

TEST_F(HostGuide, TheOtherCallsSendNothing)
{
    bind(m_scanner);
    m_scanner.clearJournal();
    setDevice(ui(), m_scanner.handle());
    setButtonTemplage(ui(), 1);
    getCurrentResolution(ui());
    getCurrentFiletype(ui());
    getScanSourceType(ui());
    isSingleScan(ui());
    getWaitingJobTime(ui());
    isDoubleSideScan(ui());
    isSplitScan(ui());
    delete static_cast<QDialog*>(creatKestrelSetUI(nullptr));
    EXPECT_TRUE(untouched());
}

TEST_F(HostGuide, APreviewIsStartedDescribedReadAndCancelled)
{
    bind(m_scanner);
    FakeFrame frame;
    frame.parameters = {SANE_FRAME_RGB, SANE_TRUE, 3, 1, 1, 8};
    frame.bytes = {1, 2, 3};
    m_scanner.addFrame(frame);
    m_scanner.clearJournal();
    dialog().on_preview_clicked();
    const Journal journal = m_scanner.journal();
    std::vector<CallKind> kinds;
    for (const Call& call : journal.calls()) {
        if (call.kind != CallKind::Describe && call.kind != CallKind::Get &&
            (kinds.empty() || kinds.back() != call.kind)) {
            kinds.push_back(call.kind);
        }
    }
    EXPECT_EQ(kinds, (std::vector<CallKind>{CallKind::Set, CallKind::Start, CallKind::Parameters,
                                            CallKind::Read, CallKind::Cancel}));
}
