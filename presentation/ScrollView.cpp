#include "presentation/ScrollView.h"

#include <QCoreApplication>
#include <QWheelEvent>

namespace interactive {

void ScrollView::wheelEvent(QWheelEvent *event)
{
    if (platform::View *next = explicitNextResponder()) {
        QCoreApplication::sendEvent(next, event);
        // Taken, whatever the next one made of it: ignored, it would come there a second time by way of the
        // parents.
        event->accept();
        return;
    }
    // An ignored wheel event goes on to the parent widget, the next responder where no other was set.
    event->ignore();
}

} // namespace interactive
