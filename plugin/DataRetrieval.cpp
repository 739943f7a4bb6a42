#include "platform/LogFormat.h"
#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"

#include "common/ErrorCodes.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"
#include "common/StationIndex.h"

namespace interactive {

platform::Value InteractiveView::getData(const platform::Value &systemIndex, platform::Error *error)
{
    const QString method = selectors::bracketed(selectors::GetData);
    const StationMap &station = m_rooms->station;
    const platform::Value group =
        elementAt(station.systemIndexToGroupMapping(), systemIndex, selectors::GetData, "system index");
    log::standard(messages::GetData, {method, group});

    // Not by elementAt(): where a mapping laid out by hand is shorter there is no data, which is no wrong
    // call.
    const platform::Value slot = station.slotOf(platform::integerValue(systemIndex));
    if (group.isValid() && slot.isValid()) {
        // The record is found by group, not by panel key: it is what a group panel stored for the slot.
        const auto record = m_rooms->records.record(platform::description(group));
        const platform::Value value = record ? record->value(platform::description(slot)) : platform::Value();
        if (value.isValid())
            return value;
    }
    platform::storeError(error, InteractivePluginErrorDomain, ErrorDataNotFound,
                         platform::formatMessage(messages::DataNotFound, {method, systemIndex}));
    return {};
}

} // namespace interactive
