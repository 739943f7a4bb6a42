#include "presentation/TimeBar.h"

#include "platform/LogFormat.h"
#include "platform/Readable.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/Messages.h"

namespace interactive {

namespace {

using std::chrono::milliseconds;

constexpr double LateShare = 0.2;
/// About what a bar of a window's width shows as single steps.
constexpr int Steps = 1000;
constexpr milliseconds ShortestStep{40};
/// So that the name, which tells seconds, is not behind by one.
constexpr milliseconds LongestStep{250};
constexpr float TrackOpacity = 0.15F;
constexpr platform::Color LateColor{0.86, 0.08, 0.12, 1.0};

} // namespace

TimeBar::Look TimeBar::lookAfter(std::chrono::nanoseconds passed, milliseconds limit)
{
    const std::chrono::duration<double> left = std::max(limit - passed, std::chrono::nanoseconds(0));
    const double share = std::min(1.0, left / std::chrono::duration<double>(limit));
    const auto seconds = static_cast<qint64>(std::ceil(left.count()));
    return {share, share <= LateShare, platform::formatMessage(messages::TimeLeft, {seconds})};
}

TimeBar::TimeBar(const platform::Rect &frame, milliseconds limit, std::function<void()> over)
    : View(frame)
    , m_limit(limit)
    , m_over(std::move(over))
{
    m_timer.setInterval(std::clamp(limit / Steps, ShortestStep, LongestStep));
    connect(&m_timer, &QTimer::timeout, this, &TimeBar::follow);
    setSpokenRole(QAccessible::ProgressBar);
    m_timer.start();
    follow();
}

void TimeBar::follow()
{
    const auto passed = Clock::now() - m_begin;
    m_look = lookAfter(passed, m_limit);
    // Whoever listens hears a second once.
    if (accessibleName() != m_look.name)
        setAccessibleName(m_look.name);
    update();
    if (passed < m_limit)
        return;
    m_timer.stop();
    m_over();
}

void TimeBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor track = palette().color(QPalette::WindowText);
    track.setAlphaF(TrackOpacity);
    painter.fillRect(rect(), track);
    const platform::Color color = m_look.isLate ? LateColor : platform::Color::systemBlue();
    QRectF left(rect());
    left.setWidth(left.width() * m_look.share);
    painter.fillRect(left, platform::readable::mark(color.toQColor(), ground()));
}

} // namespace interactive
