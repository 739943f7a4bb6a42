#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;

namespace station {

/// The focus of the station's own controls, those around the plug-ins' views.
///
/// They have the focus only when a person gives it to them, with Tab or with a click: where a field goes, a
/// button is disabled or the window becomes active, the toolkit would give it to whoever comes next, and the
/// Return of a scan would press it. Then nobody has it, and what is scanned finds the field where work waits.
/// Return presses the button that has the focus, unless a scanner has sent it, Escape leaves a control, and a
/// ring shows which one it is. Thread: the main thread. Ownership: a child of the window.
class ControlFocus : public QObject
{
    Q_OBJECT
public:
    explicit ControlFocus(QWidget *window);

    /// Controls stand in the tool bar, before the plug-ins' views, where the eye comes first, or after them;
    /// each kind in the order in which they are added.
    enum class Stands { ToolBar, BeforeViews, AfterViews };
    void add(QWidget *control, Stands where);
    /// All controls of a tool, which may have fields that take keys of their own and ask for the focus.
    void addTool(const QWidget &tool);
    /// Moves the focus on or back by a Tab, in the order of the eye. Where it is no person's, nobody has the
    /// focus afterwards.
    void goOn(bool forward);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Control
    {
        QPointer<QWidget> widget;
        Stands stands;
        bool takesKeys; ///< Return and Escape are its own business, and so is when it asks for the focus.
    };
    [[nodiscard]] const Control *controlOf(const QObject *widget) const;
    void followMoves(const QObject *watched, const QEvent &event);
    [[nodiscard]] bool takesEvent(const Control &control, QEvent *event);
    [[nodiscard]] bool keyPressed(const Control &control, const QKeyEvent &event);
    [[nodiscard]] bool isWanted(const Control &control, Qt::FocusReason reason) const;
    void leave();
    void followTab(const QObject *watched, const QEvent *event);
    void placeRing(const QWidget *focused);
    [[nodiscard]] QWidgetList stops() const;

    QWidget *m_window;
    QWidget *m_ring;
    QList<Control> m_controls;
    QPointer<QWidget> m_chosen; ///< The one that a person has given the focus to.
    bool m_isTab = false;       ///< A Tab is on its way.
};

} // namespace station
