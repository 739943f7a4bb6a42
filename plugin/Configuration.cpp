#include "plugin/Configuration.h"

#include "input/SlotLabels.h"
#include "plugin/ErrorCodes.h"
#include "plugin/Messages.h"

namespace interactive {

namespace config {

QString text(const QString &key, const platform::Dictionary &from)
{
    const auto found = from.constFind(key);
    return found == from.constEnd() || !found->isValid() ? QString(QLatin1String(""))
                                                         : platform::description(*found);
}

qint64 integer(const QString &key, const platform::Dictionary &from)
{
    return platform::integerValue(text(key, from));
}

QString label(const platform::Dictionary &from)
{
    const QString given = text(Label, from);
    return given.isEmpty() ? DefaultLabel : given;
}

} // namespace config

namespace {

constexpr qsizetype MaximumGroupInputs = 12;
constexpr qsizetype MaximumSystemInputs = 1;

std::optional<Refusal> groupRefusal(const platform::Dictionary &config, const platform::Array &list,
                                    qsizetype inputCount, const StationShape &station)
{
    if (inputCount > 0 && labels::hasInvalidLabel(list, station.slotMapping))
        return Refusal{ErrorLabelIsNoSlotName, messages::LabelIsNoSlotName};
    if (static_cast<quint64>(list.size()) > station.slotCount)
        return Refusal{ErrorTooManyLabels, messages::TooManyLabels};
    // Compared as unsigned numbers, so that a negative column is refused too.
    if (static_cast<quint64>(config::integer(config::Column, config)) > station.slotCount)
        return Refusal{ErrorColumnExceedsSlots, messages::ColumnExceedsSlots};
    if (inputCount > MaximumGroupInputs || labels::hasDuplication(list))
        return Refusal{ErrorTooManyOrDuplicatedInputs, messages::TooManyOrDuplicatedInputs};
    return std::nullopt;
}

} // namespace

std::optional<Refusal> refusalOf(const platform::Dictionary &config, bool forGroup,
                                 const platform::Value &inputs, const platform::Value &switches,
                                 const StationShape &station)
{
    std::optional<Refusal> pending;
    if (inputs.isValid() && switches.isValid())
        pending = Refusal{ErrorInputAndSwitch, messages::InputAndSwitch};

    const platform::Array inputList = inputs.toList();
    const platform::Array switchList = switches.toList();
    const qsizetype inputCount = inputList.size();
    const bool switchesOnly = inputCount == 0 && !switchList.isEmpty();
    if (!inputs.isValid() && !switchesOnly)
        return pending;

    std::optional<Refusal> fired;
    if (forGroup)
        fired = groupRefusal(config, switchesOnly ? switchList : inputList, inputCount, station);
    else if (inputCount > MaximumSystemInputs)
        fired = Refusal{ErrorTooManyInputsForSystem, messages::TooManyInputsForSystem};
    return fired ? fired : pending;
}

} // namespace interactive
