#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace station {

/// The focus of the station's own controls, those around the plug-ins' views.
///
/// They have the focus only when a person gives it to them, with Tab or with a click: where a field goes, a
/// button is disabled or the window becomes active, the toolkit would give it to whoever comes next, and the
/// Return of a scan would press it. Then nobody has it, and what is scanned finds the field where work waits.
/// Return presses the button that has the focus, Escape leaves a control, and a ring shows which one it is.
/// Thread: the main thread. Ownership: a child of the window.
class ControlFocus : public QObject
{
    Q_OBJECT
public:
    explicit ControlFocus(QWidget *window);

    /// Controls stand before the plug-ins' views, where the eye comes first, or after them; each kind in the
    /// order in which they are added.
    enum class Stands { BeforeViews, AfterViews };
    void add(QWidget *control, Stands where);
    /// Moves the focus on or back by a Tab, in the order of the eye; false where it is no person's.
    [[nodiscard]] bool goOn(bool forward);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool keyPressed(QWidget *control, int key);
    [[nodiscard]] bool isWanted(const QWidget *control, Qt::FocusReason reason) const;
    void leave();
    void followTab(const QObject *watched, const QEvent *event);
    void placeRing(const QWidget *focused);
    [[nodiscard]] QWidgetList stops() const;

    QWidget *m_window;
    QWidget *m_ring;
    QList<QPointer<QWidget>> m_controls;
    QList<QPointer<QWidget>> m_after; ///< Those of the controls that stand after the views.
    QPointer<QWidget> m_chosen;       ///< The one that a person has given the focus to.
    bool m_isTab = false;             ///< A Tab is on its way.
};

} // namespace station
