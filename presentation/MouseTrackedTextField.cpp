#include "presentation/MouseTrackedTextField.h"

#include "platform/NotificationCenter.h"

#include <QMouseEvent>

namespace interactive {

void MouseTrackedTextField::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    platform::NotificationCenter::defaultCenter().post(TextFieldMouseDownNotification, this);
}

} // namespace interactive
