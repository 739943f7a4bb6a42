#include "station/StationConfig.h"

namespace station {

QStringList StationConfig::groups() const
{
    QStringList names = systemGroups;
    names.removeDuplicates();
    return names;
}

QList<SystemRow> StationConfig::systems() const
{
    QList<SystemRow> rows;
    for (qsizetype i = 0; i < systemGroups.size(); ++i)
        rows.append({static_cast<int>(i), systemGroups.at(i), systemSlots.at(i)});
    return rows;
}

} // namespace station
