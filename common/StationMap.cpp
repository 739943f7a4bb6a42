#include "common/StationMap.h"

#include <utility>

#include "common/SlotLabels.h"

namespace interactive {

StationMap::StationMap(platform::Array groupMapping, platform::Array slotMapping)
    : m_groupMapping(std::move(groupMapping))
    , m_slotMapping(std::move(slotMapping))
    , m_groupNames(labels::unique(m_groupMapping))
    , m_slotCount(static_cast<quint64>(labels::unique(m_slotMapping).size()))
{
    // Under the description, because panel keys, through which groups are asked for, are texts.
    for (const platform::Value &name : std::as_const(m_groupNames))
        m_groupNumbers.insert(platform::description(name), static_cast<quint64>(m_groupNumbers.size()));
    for (qsizetype system = 0; system < m_groupMapping.size(); ++system)
        m_systems[platform::description(m_groupMapping.at(system))].append(static_cast<quint64>(system));
}

platform::Value StationMap::groupOf(qint64 system) const
{
    return m_groupMapping.value(static_cast<qsizetype>(system));
}

platform::Value StationMap::slotOf(qint64 system) const
{
    // value() and not at(): mappings laid out by hand may differ in length.
    return m_slotMapping.value(static_cast<qsizetype>(system));
}

std::optional<quint64> StationMap::groupNumber(const QString &name) const
{
    const auto found = m_groupNumbers.constFind(name);
    return found == m_groupNumbers.cend() ? std::nullopt : std::optional(*found);
}

const QList<quint64> &StationMap::systemsOf(const QString &group) const
{
    const auto found = m_systems.constFind(group);
    // A list of its own for "none", since what is handed out by reference must live as long as the map.
    return found == m_systems.cend() ? m_none : *found;
}

} // namespace interactive
