// Mouse, keyboard, pictures and numbers, in any order, into the preview box. The selection stays a
// rectangle, and one that was begun on the picture never leaves it.
#include "bench.h"
#include "input.h"
#include "preview_input.h"
#include "widgets/preview_box.h"

#include <QFocusEvent>
#include <QImage>
#include <QLinearGradient>
#include <QRegion>

#include <array>
#include <memory>
#include <tuple>

using namespace kestrel::fuzz;
using kestrel::SelectionState;
using kestrel::test::Box;

namespace {

constexpr int kMostSteps = 200;
// To fit a strip to a page's height takes as long as a thousand clicks.
constexpr int kMostLargePictures = 4;
constexpr QSize kScreen(1920, 1200);
constexpr double kLargePicture = 2e6; // pixels

class Session
{
public:
    explicit Session(Input& input) : m_input(input)
    {
        m_window.resize(400, 600);
        m_box = std::make_unique<Box>(&m_window).release();
        m_box->load(QSize(40, 60));
        m_window.show();
    }

    void run()
    {
        for (int step = 0; step < kMostSteps && !m_input.isEmpty(); ++step) {
            m_box->announced.clear();
            doSomething();
            check();
        }
        paint(m_box->rect());
        check();
    }

private:
    kestrel::Selection& selection() { return m_box->selection; }
    bool isIdle() { return selection().state() == SelectionState::Idle; }
    /// @return the selection as it stands, nothing taken over
    QRect selected()
    {
        kestrel::Selection copy = selection();
        return copy.selectRect();
    }

    void doSomething()
    {
        using Act = void (Session::*)();
        static constexpr std::array<Act, 16> kActs = {
            &Session::press,   &Session::move,   &Session::move,    &Session::release,
            &Session::press,   &Session::move,   &Session::release, &Session::key,
            &Session::key,     &Session::paint,  &Session::picture, &Session::zoom,
            &Session::numbers, &Session::adjust, &Session::window,  &Session::ask};
        (this->*kActs.at(static_cast<std::size_t>(m_input.below(kActs.size()))))();
    }

    QPointF point() { return anyPoint(m_input, selected()); }

    void press()
    {
        const QPointF at = point();
        const QPoint rounded = kestrel::roundedPoint(at);
        const bool wasIdle = isIdle();
        const bool wasDrawing = selection().state() == SelectionState::Drawing;
        const bool wasInside = selection().contains(rounded);
        m_box->press(at, anyButton(m_input));
        // A second button inside does not begin anew. What is at the origin while nothing is
        // selected can be moved, where the picture has no scale.
        const bool begins = selection().state() == SelectionState::Drawing && !wasDrawing;
        if (wasIdle || begins || !wasInside) {
            const auto& area = selection().area();
            m_onPicture = QRect(area.origin, area.maximum).contains(rounded);
        }
    }
    void move()
    {
        m_box->move(point());
        for (const auto& [rect, standard] : m_box->announced) {
            require(rect == selected() && standard == m_box->standard,
                    "another selection is announced than there is");
        }
    }
    void release() { m_box->release(point(), anyButton(m_input)); }

    void key()
    {
        static const std::vector<int> kKeys = {Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,
                                               Qt::Key_Down, Qt::Key_Escape, Qt::Key_Tab,
                                               Qt::Key_A,    Qt::Key_Return};
        const int code = m_input.pick(kKeys);
        const auto modifiers = Qt::KeyboardModifiers(static_cast<int>(m_input.below(64)) << 25) &
                               Qt::KeyboardModifierMask;
        QKeyEvent shortcut(QEvent::ShortcutOverride, code, modifiers);
        QApplication::sendEvent(m_box, &shortcut);
        for (int times = m_input.below(8) + 1; times > 0; --times) {
            m_box->key(code, modifiers);
        }
    }

    void paint()
    {
        switch (m_input.byte() % 3) {
        case 0:
            paint(m_box->rect());
            break;
        case 1:
            paint(selected());
            break;
        default:
            paint({m_input.integer() / 64, m_input.integer() / 64, m_input.below(300),
                   m_input.below(300)});
        }
    }
    /// As much of @p asked as a screen can show.
    void paint(const QRect& asked)
    {
        const QRect rect(asked.topLeft(), asked.size().boundedTo(kScreen));
        QImage canvas(120, 90, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(1.0 + m_input.below(3) * 0.5);
        m_box->render(&canvas, QPoint(), QRegion(rect));
    }

    void picture()
    {
        QImage image = anyPicture(m_input);
        const double height = m_input.flag() ? m_input.below(400) : m_input.real();
        const int standard = m_input.flag() ? m_input.below(80) : m_input.integer();
        if (m_input.flag()) {
            m_box->setMaxHeightAndStandrad(static_cast<float>(height), standard);
        }
        const double shownHeight = m_box->standard * (m_box->maximumHeight / 20.0);
        const double shownWidth = shownHeight / image.height() * image.width();
        if (!(shownWidth * shownHeight < kLargePicture) && tooManyLarge()) {
            return;
        }
        const QImage before = m_box->source;
        const bool shown = m_box->setImage(image);
        require(shown != image.isNull(), "a picture is not taken");
        require(shown || m_box->source == before, "no picture replaces a picture");
        m_onPicture = m_onPicture && (isIdle() || !shown);
    }

    bool tooManyLarge() { return ++m_largePictures > kMostLargePictures; }
    bool isLarge() const
    {
        const double width = m_box->source.width() * m_box->scale;
        return !(width * m_box->source.height() * m_box->scale < kLargePicture);
    }

    void zoom()
    {
        if (isLarge() && tooManyLarge()) {
            return;
        }
        switch (m_input.byte() % 6) {
        case 0:
            m_box->zoomin();
            break;
        case 1:
            m_box->zoomout();
            break;
        case 2:
            m_box->setScale(m_input.integer());
            break;
        case 3:
            m_box->setRotate(m_input.flag() ? 90 * m_input.below(4) : m_input.integer());
            break;
        case 4:
            m_box->setautosize();
            break;
        default:
            m_box->setMode(m_input.integer());
        }
    }

    void numbers()
    {
        switch (m_input.byte() % 3) {
        case 0:
            m_onPicture = false;
            std::apply([this](auto... mm) { m_box->setRect(mm...); }, m_input.reals<4>());
            break;
        case 1:
            std::apply([this](auto... mm) { m_box->setMoveRect(mm...); }, m_input.reals<2>());
            break;
        default:
            m_onPicture = false;
            std::apply([this](auto... mm) { m_box->setSelectedRect(mm...); }, m_input.reals<2>());
        }
    }

    void adjust()
    {
        if (isLarge() && tooManyLarge()) {
            return;
        }
        switch (m_input.byte() % 6) {
        case 0:
            m_box->setBrightness(m_input.integer());
            break;
        case 1:
            m_box->AdjustContrast(m_input.integer());
            break;
        case 2:
            std::apply([this](auto... by) { m_box->setimage_pix(by...); }, m_input.integers<2>());
            break;
        case 3:
            m_box->setRipewhiteEnable(m_input.integer());
            break;
        case 4:
            m_box->clearpaint();
            break;
        default:
            m_box->setBackground(m_input.flag() ? QBrush(QColor(m_input.word()))
                                                : QBrush(QLinearGradient(0, 0, 9, 9)));
        }
    }

    void window()
    {
        switch (m_input.byte() % 4) {
        case 0:
            m_box->resize(QSize{m_input.below(700), m_input.below(700)});
            break;
        case 1:
            m_window.setVisible(m_input.flag());
            break;
        case 2: {
            const auto reason = static_cast<Qt::FocusReason>(m_input.below(8));
            QFocusEvent event(m_input.flag() ? QEvent::FocusIn : QEvent::FocusOut, reason);
            QApplication::sendEvent(m_box, &event);
            break;
        }
        default:
            m_box->setFocus(static_cast<Qt::FocusReason>(m_input.below(8)));
        }
    }

    void ask()
    {
        const QPoint a{m_input.integer(), m_input.integer()};
        const QPoint b{m_input.integer(), m_input.integer()};
        const QRect between = m_box->getRect(a, b);
        require(between.left() <= a.x() && between.top() <= a.y(), "a corner is left out");
        switch (m_input.byte() % 6) {
        case 0:
            m_box->cancelManualRectSet();
            require(isIdle(), "a cleared selection is there");
            break;
        case 1:
            m_box->getMoveRect();
            break;
        case 2:
            m_box->getStretchRect();
            break;
        case 3:
            require(m_box->getSelectRect() == m_box->getSelectRect(), "asking twice changes it");
            break;
        case 4:
            m_box->setStretchCursorStyle(m_box->getStrethRectState(a));
            break;
        default:
            require(m_box->isPressPointInSelectRect(a) == selection().contains(a),
                    "inside and outside at once");
            (void)m_box->getMovePoint();
        }
    }

    void check()
    {
        if (isIdle()) {
            m_onPicture = true;
            return;
        }
        const QRect rect = selected();
        require(rect.isValid(), "the selection is no rectangle");
        const auto& area = selection().area();
        const QRect whole(area.origin, area.maximum);
        require(!m_onPicture || whole.contains(rect), "the selection has left the picture");
    }

    Input& m_input;
    QWidget m_window;
    Box* m_box = nullptr;
    int m_largePictures = 0;
    bool m_onPicture = true; ///< the selection, if there is one, was begun and kept on the picture
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    Session(input).run();
    return 0;
}
