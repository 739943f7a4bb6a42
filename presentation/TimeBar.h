#pragma once

#include "platform/View.h"

#include <QTimer>

#include <chrono>
#include <functional>

namespace interactive {

/// The bar of a panel that has to be answered within a time: it runs down from the right, turns red for the
/// last fifth, and tells the time that is left by its accessible name.
///
/// It follows a clock that nothing stops, and paints as often as it has changed by a step that can be seen.
/// Thread: the main thread.
class TimeBar : public platform::View
{
    Q_OBJECT
public:
    using Clock = std::chrono::steady_clock;

    /// How the bar looks at a time.
    struct Look
    {
        double share = 1.0; ///< How much is left, 0 to 1.
        bool isLate = false;
        QString name;
    };
    /// Requires: the limit is more than 0.
    [[nodiscard]] static Look lookAfter(std::chrono::nanoseconds passed, std::chrono::milliseconds limit);

    /// The time begins now. `over` is called once, when it has ended.
    TimeBar(const platform::Rect &frame, std::chrono::milliseconds limit, std::function<void()> over);

    [[nodiscard]] Clock::time_point end() const { return m_begin + m_limit; }
    [[nodiscard]] const Look &look() const { return m_look; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void follow();

    std::chrono::milliseconds m_limit;
    Clock::time_point m_begin = Clock::now();
    std::function<void()> m_over;
    Look m_look;
    QTimer m_timer;
};

} // namespace interactive
