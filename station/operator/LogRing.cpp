#include "station/operator/LogRing.h"

#include <algorithm>

namespace station {

LogRing::LogRing()
    : m_receiver(KVKLogGetProxy()->addReceiver([this](std::span<const KVKLogRecord> lines) { keep(lines); }))
{}

LogRing::~LogRing()
{
    KVKLogGetProxy()->removeReceiver(m_receiver);
}

void LogRing::keep(std::span<const KVKLogRecord> lines)
{
    const std::scoped_lock lock(m_mutex);
    for (const KVKLogRecord &line : lines) {
        m_lines.push_back(line.message);
        // A run may log for days; a script asks for the latest lines.
        if (m_lines.size() > static_cast<std::size_t>(Capacity))
            m_lines.pop_front();
    }
}

QStringList LogRing::last(qint64 count) const
{
    static_cast<void>(KVKLogGetProxy()->flush());
    const std::scoped_lock lock(m_mutex);
    const qint64 shown = std::clamp<qint64>(count, 0, static_cast<qint64>(m_lines.size()));
    return {m_lines.end() - shown, m_lines.end()};
}

} // namespace station
