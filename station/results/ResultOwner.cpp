#include "station/results/ResultOwner.h"

namespace station {

QString ResultOwner::name() const
{
    if (system.isValid())
        return QStringLiteral("system %1").arg(platform::description(system));
    if (group.isValid())
        return QStringLiteral("group %1").arg(platform::description(group));
    return QStringLiteral("station");
}

QString outcomeText(KVKLuaOutcome outcome)
{
    switch (outcome) {
    case KVKLuaOutcome::Passed:
        return QStringLiteral("passed");
    case KVKLuaOutcome::Failed:
        return QStringLiteral("failed");
    case KVKLuaOutcome::Erred:
        return QStringLiteral("erred");
    case KVKLuaOutcome::Stopped:
        return QStringLiteral("stopped");
    }
    return {};
}

} // namespace station
