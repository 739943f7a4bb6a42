#include "presentation/ScrollView.h"

#include <QWheelEvent>

namespace interactive {

void ScrollView::wheelEvent(QWheelEvent *event)
{
    // An ignored wheel event goes on to the parent widget, which is the next responder of a scroll view in a
    // panel.
    event->ignore();
}

} // namespace interactive
