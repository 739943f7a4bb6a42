#include "platform/MainQueue.h"
#include "plugin/InteractiveView.h"
#include "plugin/PassNotice.h"
#include "plugin/Rooms.h"

#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"
#include "common/StationIndex.h"

namespace interactive {

platform::Value InteractiveView::setLoop(const platform::Value &loopMaximum, platform::Error *)
{
    // Loop mode takes its number from the field, which is not there yet.
    if (!isViewLoaded())
        return qlonglong{0};
    m_rooms->records.setLoopMaximum(loopMaximum);
    platform::MainQueue::sync([&] { m_rooms->loop.show(platform::description(loopMaximum)); });
    return qlonglong{1};
}

platform::Dictionary InteractiveView::getLoopConfig(platform::Error *)
{
    return m_rooms->records.loopRecord();
}

platform::Value InteractiveView::isLoopFinished(const platform::Value &groupNumber, platform::Error *)
{
    log::debug(messages::LoopData,
               {selectors::bracketed(selectors::IsLoopFinished), platform::Value(m_rooms->records.all())});
    const bool finished = m_rooms->records.finishPass(groupNumber);
    // The record is read on the main thread: of two groups that report at once the later one tells of both.
    platform::MainQueue::sync(
        [this] { tellPasses(m_rooms->records.loopRecord(), m_rooms->station.groupCount()); });
    if (!finished)
        return qlonglong{0};
    const platform::Value group =
        elementAt(m_rooms->station.groupNames(), groupNumber, selectors::IsLoopFinished, "group number");
    // The next units come to all positions of the group: what was answered for these is no answer for them.
    const QString name = platform::description(group);
    QStringList panelKeys{name};
    for (const quint64 system : m_rooms->station.systemsOf(name))
        panelKeys.append(QString::number(system));
    // A panel that is open is asked for the next units already.
    for (const QString &panelKey : std::as_const(panelKeys))
        m_rooms->records.forgetAnswers(panelKey, m_rooms->waits.isWaited(panelKey));
    return qlonglong{1};
}

} // namespace interactive
