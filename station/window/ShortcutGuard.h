#pragma once

#include <QObject>

#include <chrono>
#include <functional>

class QKeyEvent;
class QWidget;

namespace station {

/// Keeps a scanner from pressing shortcuts: some write a control character of a label as Ctrl with a letter,
/// and a window must not close in the midst of a scan. A letter with Ctrl or Alt that follows a character
/// faster than a hand types is a part of the text, and goes where the text goes. Function keys are never part
/// of one, and neither is what follows a Return or a Tab.
///
/// Thread: the main thread. Ownership: a child of the window.
class ShortcutGuard : public QObject
{
    Q_OBJECT
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;
    static constexpr std::chrono::milliseconds FasterThanAHand{35};

    explicit ShortcutGuard(QWidget *window);
    /// What tells the time; for tests.
    void setClock(Clock clock) { m_clock = std::move(clock); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void note(const QKeyEvent &key);
    [[nodiscard]] bool isPartOfText(const QKeyEvent &key) const;

    QWidget *m_window;
    Clock m_clock = &std::chrono::steady_clock::now;
    std::chrono::steady_clock::time_point m_lastCharacter;
    bool m_isInText = false;
};

} // namespace station
