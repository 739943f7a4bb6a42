#include "plugin/ShowError.h"

#include "platform/MainQueue.h"
#include "plugin/Rooms.h"
#include "plugin/WaitNotice.h"

#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

using platform::MainQueue;

bool showError(Rooms &rooms, const QString &message, const platform::Dictionary &config,
               const platform::Identifier &identifier, const QList<quint64> &systems)
{
    const QString method = selectors::bracketed(selectors::ShowError);
    log::debug(messages::MessageCalled, {method, message});
    if (identifier.isNull()) {
        log::error(messages::ErrorWithoutPanel, {method, message});
        return true;
    }
    Waits::Wait wait(rooms.waits, identifier, Waits::Purpose::Acknowledgement);
    if (rooms.waits.isInterrupted())
        return false;
    // The place is taken, so that no press is lost however late the panel is drawn. Should the host end the
    // wait before that, the job that takes the panel away stands behind this one.
    MainQueue::async(
        [&rooms, message, config, identifier] { rooms.errors.draw(message, config, identifier); });
    const WaitNotice notice(messages::WaitsForOperator, systems);
    const bool acknowledged = wait.wait() == Waits::Wake::Pressed;
    MainQueue::sync([&] {
        rooms.views.resetUI(identifier);
        rooms.document.fit();
        rooms.focus.panelGone(identifier);
        if (acknowledged)
            rooms.keys.release();
    });
    return acknowledged;
}

} // namespace interactive
