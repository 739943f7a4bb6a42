#include "platform/Control.h"

#include <QFocusEvent>

#include <utility>

namespace platform {

void Control::setTarget(QObject *target, const char *selector, Action action)
{
    m_target = target;
    m_selector = selector;
    m_action = std::move(action);
}

void Control::sendAction()
{
    // A target that is gone is told nothing: its action would use it.
    if (!m_target || !m_action)
        return;
    // A copy, since the action may take this control away.
    const Action action = m_action;
    action(this);
}

void Control::setFont(const Font &font)
{
    m_font = font;
    fontChanged();
    update();
}

bool Control::isTabbedTo(const QEvent &event)
{
    if (event.type() != QEvent::FocusIn)
        return false;
    const Qt::FocusReason reason = static_cast<const QFocusEvent &>(event).reason();
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

} // namespace platform
