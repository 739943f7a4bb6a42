#include "platform/LogFormat.h"
#include "plugin/ErrorCodes.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"
#include "plugin/StationIndex.h"

namespace interactive {

platform::Value InteractiveView::getData(const platform::Value &systemIndex, platform::Error *error)
{
    const QString method = selectors::bracketed(selectors::GetData);
    const platform::Value group =
        elementAt(m_systemIndexToGroupMapping, systemIndex, selectors::GetData, "system index");
    log::standard(messages::GetData, {method, group});

    const platform::Value slot =
        m_systemIndexToSlotMapping.value(static_cast<qsizetype>(platform::integerValue(systemIndex)));
    if (group.isValid() && slot.isValid()) {
        // The record is found by group, not by panel key: it is what a group panel stored for the slot.
        const platform::Value record = m_savedData.lock()->value(platform::description(group));
        const platform::Value value = record.toMap().value(platform::description(slot));
        if (value.isValid())
            return value;
    }
    platform::storeError(error, InteractivePluginErrorDomain, ErrorDataNotFound,
                         platform::formatMessage(messages::DataNotFound, {method, systemIndex}));
    return {};
}

} // namespace interactive
