#include "presentation/MouseTrackedTextField.h"

#include "platform/NotificationCenter.h"
#include "platform/ScrollView.h"

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
    platform::ScrollView::reveal(this);
    return true;
}

void MouseTrackedTextField::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    platform::NotificationCenter::defaultCenter().post(TextFieldMouseDownNotification, this);
}

} // namespace interactive
