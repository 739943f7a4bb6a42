#include "plugin/Configuration.h"

#include "platform/LogFormat.h"
#include "presentation/ColorEngine.h"

#include <algorithm>
#include <limits>

#include "common/ConfigValues.h"
#include "common/ErrorCodes.h"
#include "common/Identifiers.h"
#include "common/Messages.h"
#include "common/RecordKeys.h"
#include "common/SlotLabels.h"

namespace interactive {

namespace {

constexpr qsizetype MaximumGroupInputs = 12;
/// A slot's box has room for one field.
constexpr qsizetype MaximumSystemInputs = 1;

Refusal refusal(int code, const char *message)
{
    return {code, QLatin1String(message)};
}

std::optional<Refusal> groupRefusal(const platform::Dictionary &config, const platform::Array &list,
                                    qsizetype inputCount, const StationMap &station)
{
    // Switches may be named for slots that this station does not have: none is drawn for those.
    if (inputCount > 0 && labels::hasInvalidLabel(list, station.systemIndexToSlotMapping()))
        return refusal(ErrorLabelIsNoSlotName, messages::LabelIsNoSlotName);
    if (static_cast<quint64>(list.size()) > station.slotCount())
        return refusal(ErrorTooManyLabels, messages::TooManyLabels);
    // Compared as unsigned numbers, so that a negative column is refused too.
    if (static_cast<quint64>(config::integer(config::Column, config)) > station.slotCount())
        return refusal(ErrorColumnExceedsSlots, messages::ColumnExceedsSlots);
    if (inputCount > MaximumGroupInputs || labels::hasDuplication(list))
        return refusal(ErrorTooManyOrDuplicatedInputs, messages::TooManyOrDuplicatedInputs);
    return std::nullopt;
}

/// An entry under one of these keys would be lost between what the record keeps for itself.
std::optional<Refusal> reservedLabel(const platform::Array &list)
{
    for (const platform::Value &label : list) {
        const QString text = platform::description(label);
        if (text == keys::Length || text == keys::ClickedButton || text == identifiers::SharedInput)
            return Refusal{ErrorReservedLabel, platform::formatMessage(messages::ReservedLabel, {text})};
    }
    return std::nullopt;
}

} // namespace

std::optional<Refusal> refusalOf(const platform::Dictionary &config, bool forGroup,
                                 const platform::Value &inputs, const platform::Value &switches,
                                 const StationMap &station)
{
    // Kept back: what is wrong with the labels themselves says more, and is told in its place.
    std::optional<Refusal> pending;
    if (inputs.isValid() && switches.isValid())
        pending = refusal(ErrorInputAndSwitch, messages::InputAndSwitch);

    const platform::Array inputList = inputs.toList();
    const platform::Array switchList = switches.toList();
    const qsizetype inputCount = inputList.size();
    const bool switchesOnly = inputCount == 0 && !switchList.isEmpty();
    if (!inputs.isValid() && !switchesOnly)
        return pending;

    const platform::Array &list = switchesOnly ? switchList : inputList;
    std::optional<Refusal> fired;
    if (forGroup)
        fired = groupRefusal(config, list, inputCount, station);
    else if (inputCount > MaximumSystemInputs)
        fired = refusal(ErrorTooManyInputsForSystem, messages::TooManyInputsForSystem);
    if (!fired)
        fired = reservedLabel(list);
    return fired ? fired : pending;
}

} // namespace interactive
