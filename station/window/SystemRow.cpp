#include "station/window/SystemRow.h"

namespace station {

QString stateText(SystemState state)
{
    switch (state) {
    case SystemState::Idle:
        return QStringLiteral("Idle");
    case SystemState::Running:
        return QStringLiteral("Running");
    case SystemState::Waiting:
        return QStringLiteral("Waiting");
    case SystemState::Passed:
        return QStringLiteral("Passed");
    case SystemState::Failed:
        return QStringLiteral("Failed");
    case SystemState::Erred:
        return QStringLiteral("Error");
    case SystemState::Stopped:
        return QStringLiteral("Stopped");
    }
    return {};
}

QString stateText(SystemState state, const QString &about)
{
    return about.isEmpty() ? stateText(state) : stateText(state) + QStringLiteral(": ") + about;
}

} // namespace station
