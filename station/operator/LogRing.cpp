#include "station/operator/LogRing.h"

#include <algorithm>

namespace station {

LogRing::LogRing()
    : m_sink(KVKLogGetProxy()->addSink([this](const KVKLogProxy::Line &line) { keep(line.message); }))
{}

LogRing::~LogRing()
{
    KVKLogGetProxy()->removeSink(m_sink);
}

void LogRing::keep(const QString &line)
{
    const std::scoped_lock lock(m_mutex);
    m_lines.push_back(line);
    // A run may log for days; a script asks for the latest lines.
    if (m_lines.size() > static_cast<std::size_t>(Capacity))
        m_lines.pop_front();
}

QStringList LogRing::last(qint64 count) const
{
    const std::scoped_lock lock(m_mutex);
    const qint64 shown = std::clamp<qint64>(count, 0, static_cast<qint64>(m_lines.size()));
    return {m_lines.end() - shown, m_lines.end()};
}

} // namespace station
