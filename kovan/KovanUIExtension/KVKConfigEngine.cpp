#include "kovan/KovanUIExtension/KVKConfigEngine.h"

KVKConfigEngine *KVKConfigEngine::sharedConfigEngine()
{
    static KVKConfigEngine engine;
    return &engine;
}

bool KVKConfigEngine::statusTableCustomRowColorEnabled() const
{
    const std::lock_guard lock(m_mutex);
    return m_customRowColorEnabled;
}

platform::Array KVKConfigEngine::systemIndexToGroupMapping() const
{
    const std::lock_guard lock(m_mutex);
    return m_groups;
}

platform::Array KVKConfigEngine::systemIndexToSlotMapping() const
{
    const std::lock_guard lock(m_mutex);
    return m_slots;
}

void KVKConfigEngine::setStatusTableCustomRowColorEnabled(bool enabled)
{
    const std::lock_guard lock(m_mutex);
    m_customRowColorEnabled = enabled;
}

void KVKConfigEngine::setSystemIndexToGroupMapping(const platform::Array &groups)
{
    const std::lock_guard lock(m_mutex);
    m_groups = groups;
}

void KVKConfigEngine::setSystemIndexToSlotMapping(const platform::Array &slotNames)
{
    const std::lock_guard lock(m_mutex);
    m_slots = slotNames;
}

QString KVKConfigEngine::locale() const
{
    const std::lock_guard lock(m_mutex);
    return m_locale;
}

void KVKConfigEngine::setLocale(const QString &name)
{
    const std::lock_guard lock(m_mutex);
    m_locale = name;
}
