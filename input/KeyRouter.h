#pragma once

#include "input/Focus.h"
#include "presentation/PanelViews.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <memory>

namespace interactive {

/// Brings the keys of the window to where they belong.
///
/// While a press is being carried out, keys and clicks are held back and come after it, in their order: what
/// was typed before a button was pressed is there when the button asks for it, and nothing comes before the
/// press that came after it. A character that no field takes (nothing has the focus, or a control that enters
/// no text) goes to the field where work waits; where no field waits, the text is refused as a whole, on the
/// window's status line and in the log. So is a scan whose field went away in the midst of it: no part of it
/// lands in another field. Page Up and Page Down scroll the panels where no control takes them, and Tab finds
/// the controls in the order in which they stand (taborder). Thread: the main thread.
class KeyRouter : public QObject
{
    Q_OBJECT
public:
    KeyRouter(PanelViews &views, Focus &focus);
    ~KeyRouter() override;

    /// Begins to look at the keys of the application. Called once, when the view was loaded.
    void start();

    /// Holds keys and clicks back until each hold was released.
    void hold() { ++m_holds; }
    void release();
    [[nodiscard]] bool isHolding() const { return m_holds > 0; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool isOurs(const QObject *watched) const;
    [[nodiscard]] bool route(QWidget *receiver, const QKeyEvent &event);
    [[nodiscard]] bool scroll(const QWidget *receiver, const QKeyEvent &event);
    [[nodiscard]] bool continuesElsewhere(const QWidget *receiver) const;
    void noteBurst(QWidget *receiver, const QKeyEvent &event);
    [[nodiscard]] bool takeAsStray(const QKeyEvent &event);
    [[nodiscard]] bool giveToWaitingField(const QKeyEvent &event);
    void refuseStray();

    PanelViews &m_views;
    Focus &m_focus;
    bool m_giving = false; ///< A character is on its way into the field where work waits.
    int m_holds = 0;
    /// A key goes to whoever has the focus when it is let go, a click to the view that was clicked.
    struct Held
    {
        QPointer<QWidget> clicked;
        std::unique_ptr<QEvent> event;
    };
    std::deque<Held> m_held;

    QString m_stray;    ///< What is being typed and belongs to no field.
    QTimer m_strayEnds; ///< Runs out when the text is not ended with Return.

    // The characters that came one right after the other, and who got them.
    QString m_burst;
    QPointer<QWidget> m_burstReceiver;
    QElapsedTimer m_sinceCharacter;
};

} // namespace interactive
