#pragma once

#include "platform/Value.h"

#include <QString>

#include <mutex>

/// The station's configuration as plug-ins see it.
///
/// Thread: any.
class KVKConfigEngine
{
public:
    [[nodiscard]] static KVKConfigEngine *sharedConfigEngine();

    /// Whether the status table shows each system in colours of its own.
    [[nodiscard]] bool statusTableCustomRowColorEnabled() const;
    /// Element i is the name of the group that system index i belongs to.
    [[nodiscard]] platform::Array systemIndexToGroupMapping() const;
    /// Element i is the slot name of system index i.
    [[nodiscard]] platform::Array systemIndexToSlotMapping() const;

    /// The name of the locale that the operator writes numbers in ("de_DE"); "C" unless the host says so.
    [[nodiscard]] QString locale() const;

    /// Host: sets what the plug-ins find. Plug-ins read it once, when their view is loaded.
    void setStatusTableCustomRowColorEnabled(bool enabled);
    void setSystemIndexToGroupMapping(const platform::Array &groups);
    void setSystemIndexToSlotMapping(const platform::Array &slotNames);
    void setLocale(const QString &name);

private:
    mutable std::mutex m_mutex;
    bool m_customRowColorEnabled = false;
    platform::Array m_groups;
    platform::Array m_slots;
    QString m_locale = QStringLiteral("C");
};
