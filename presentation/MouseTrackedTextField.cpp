#include "presentation/MouseTrackedTextField.h"

#include "platform/Box.h"
#include "platform/NotificationCenter.h"
#include "platform/ScrollView.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace interactive {

bool MouseTrackedTextField::event(QEvent *event)
{
    // A disabled widget gets no mouse handlers; a press on a field that is switched off is told all the same.
    const bool isPress =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!isEnabled() && isPress) {
        mousePressEvent(static_cast<QMouseEvent *>(event));
        return true;
    }
    return platform::TextField::event(event);
}

bool MouseTrackedTextField::becomeFirstResponder()
{
    if (!platform::TextField::becomeFirstResponder())
        return false;
    // More panels may be open than the window holds: whoever types must see where it goes.
    bringIntoSight(this);
    return true;
}

void MouseTrackedTextField::bringIntoSight(const platform::View *field)
{
    for (const platform::View *each = field; each; each = each->superview()) {
        if (qobject_cast<const platform::Box *>(each)) {
            // The box says whose entry is asked for; where it does not fit, the field itself must be seen.
            platform::ScrollView::reveal(each);
            break;
        }
    }
    platform::ScrollView::reveal(field);
}

void MouseTrackedTextField::comeIntoSight()
{
    bringIntoSight(this);
}

void MouseTrackedTextField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F2 || isEditable() || event->isAutoRepeat()) {
        platform::TextField::keyPressEvent(event);
        return;
    }
    event->accept();
    platform::NotificationCenter::defaultCenter().post(TextFieldMouseDownNotification, this);
}

void MouseTrackedTextField::mousePressEvent(QMouseEvent *event)
{
    // Taken without the base class, which would place the cursor: whether the field gets the focus is for
    // whoever observes the press. An event that is not accepted would go on to the box around.
    event->accept();
    const bool forList = arrowArea().contains(event->position());
    const QPointer<MouseTrackedTextField> self(this);
    platform::NotificationCenter::defaultCenter().post(TextFieldMouseDownNotification, this);
    if (self && forList)
        toggleList();
}

} // namespace interactive
