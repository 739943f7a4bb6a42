#pragma once

#include "platform/Value.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace interactive {

/// Where each system of the station stands: its group and its slot. Read from the host once, at start-up, and
/// constant from then on; everything that is derived is computed once.
///
/// Systems, groups and slots are counted from 0. Thread: any, a plain value.
class StationMap
{
public:
    StationMap() = default;
    /// The mappings as the host gives them: element i belongs to system i.
    StationMap(platform::Array groupMapping, platform::Array slotMapping);

    [[nodiscard]] const platform::Array &systemIndexToGroupMapping() const { return m_groupMapping; }
    [[nodiscard]] const platform::Array &systemIndexToSlotMapping() const { return m_slotMapping; }
    /// The distinct groups in the order of their first systems.
    [[nodiscard]] const platform::Array &groupNames() const { return m_groupNames; }
    [[nodiscard]] quint64 groupCount() const { return static_cast<quint64>(m_groupNames.size()); }
    /// The number of distinct slot names.
    [[nodiscard]] quint64 slotCount() const { return m_slotCount; }

    [[nodiscard]] qsizetype systemCount() const { return m_groupMapping.size(); }
    /// The group's and the slot's name of a system; nothing beyond the mapping.
    [[nodiscard]] platform::Value groupOf(qint64 system) const;
    [[nodiscard]] platform::Value slotOf(qint64 system) const;
    /// The position of a group among the distinct ones; nothing when no group has the name.
    [[nodiscard]] std::optional<quint64> groupNumber(const QString &name) const;
    [[nodiscard]] const QList<quint64> &systemsOf(const QString &group) const;

private:
    platform::Array m_groupMapping;
    platform::Array m_slotMapping;
    platform::Array m_groupNames;
    quint64 m_slotCount = 0;
    QHash<QString, quint64> m_groupNumbers;
    QHash<QString, QList<quint64>> m_systems;
    QList<quint64> m_none;
};

} // namespace interactive
