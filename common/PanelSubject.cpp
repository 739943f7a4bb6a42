#include "common/PanelSubject.h"

namespace interactive {

PanelSubject PanelSubject::of(const platform::Value &groupNumber, const platform::Value &systemIndex,
                              const StationMap &station, Waits &waits)
{
    PanelSubject subject;
    subject.isGroup = groupNumber.isValid();
    platform::Value group;
    if (groupNumber.isValid()) {
        group = station.groupNames().value(static_cast<qsizetype>(platform::integerValue(groupNumber)));
        subject.groupNumber = groupNumber.toULongLong();
        subject.systems = station.systemsOf(platform::description(group));
        subject.panelKey = waits.panelKey(platform::description(group));
    }
    if (systemIndex.isValid()) {
        const qint64 index = platform::integerValue(systemIndex);
        if (index >= 0 && index < station.systemCount()) {
            group = station.groupOf(index);
            subject.slot = station.slotOf(index);
            // By the numbering and not by the group's name: the tiles of an overview are counted like this,
            // too. A station without slots has no panels, which is found out only later.
            if (station.slotCount() > 0)
                subject.groupNumber = static_cast<quint64>(index) / station.slotCount();
        }
        subject.systemIndex = systemIndex;
        subject.systems = {systemIndex.toULongLong()};
        subject.panelKey = waits.panelKey(platform::description(systemIndex));
    }
    // The instance that a group's own panel bears as its key: by it a slot's panel finds what stands in its
    // band.
    subject.groupName = waits.panelKey(platform::description(group));
    return subject;
}

} // namespace interactive
