#include "input/EntryNews.h"

namespace interactive::news {

KVKEntryPlace placeOf(const StationMap &station, const QString &panelKey, const QString &label)
{
    KVKEntryPlace place;
    if (station.groupNumber(panelKey)) {
        place.group = panelKey;
        for (const quint64 system : station.systemsOf(panelKey)) {
            if (platform::description(station.slotOf(static_cast<qint64>(system))) != label)
                continue;
            place.slot = label;
            place.system = system;
        }
        return place;
    }
    bool isNumber = false;
    const qint64 system = panelKey.toLongLong(&isNumber);
    if (!isNumber || system < 0 || system >= station.systemCount()) {
        place.label = label.isEmpty() ? panelKey : label;
        return place;
    }
    place.group = platform::description(station.groupOf(system));
    place.slot = platform::description(station.slotOf(system));
    place.label = label;
    place.system = static_cast<quint64>(system);
    return place;
}

} // namespace interactive::news
