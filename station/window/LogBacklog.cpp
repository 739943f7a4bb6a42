#include "station/window/LogBacklog.h"

#include "station/look/LineBreaks.h"
#include "station/window/OperatorText.h"

#include <utility>

namespace station {
namespace {

/// A whole dictionary in one line would make the pane's layout slow and tell nobody more.
constexpr int MaximumLineLength = 1000;

QString shortened(const QString &message)
{
    return message.size() > MaximumLineLength ? message.left(MaximumLineLength) + QChar(0x2026) : message;
}

/// One log line is one line of the pane, whatever it holds.
QString oneLine(const QString &message)
{
    return withoutLineBreaks(shortened(message), QString(QChar(0x23ce)));
}

} // namespace

LogBacklog::LogBacklog(qsizetype mostKept, qsizetype mostAtOnce)
    : m_mostKept(mostKept)
    , m_mostAtOnce(mostAtOnce)
{}

void LogBacklog::setOwners(Owners owners)
{
    const std::scoped_lock lock(m_mutex);
    m_owners = std::move(owners);
}

bool LogBacklog::add(KVKLogLevel level, const QString &message)
{
    LogLine line{level, QTime::currentTime(), oneLine(message), {}};
    const QString error = level == KVKLogLevel::Error ? shortened(operatorText(message)) : QString();
    const std::scoped_lock lock(m_mutex);
    if (m_owners)
        line.systems = m_owners();
    if (level == KVKLogLevel::Error) {
        ++m_errors;
        m_newestError = error;
    }
    m_lines.push_back(std::move(line));
    if (std::ssize(m_lines) > m_mostKept) {
        m_lines.pop_front();
        ++m_leftOut;
    }
    // Told once until the lines are fetched, however many come.
    return !std::exchange(m_told, true);
}

LogBacklog::Share LogBacklog::take()
{
    const std::scoped_lock lock(m_mutex);
    Share share;
    // A share at a time: keys and paint have their turn in between.
    while (!m_lines.empty() && share.lines.size() < m_mostAtOnce) {
        share.lines.append(std::move(m_lines.front()));
        m_lines.pop_front();
    }
    share.leftOut = std::exchange(m_leftOut, 0);
    share.errors = std::exchange(m_errors, 0);
    share.newestError = std::exchange(m_newestError, QString());
    share.more = m_told = !m_lines.empty();
    return share;
}

void LogBacklog::forgetErrors()
{
    const std::scoped_lock lock(m_mutex);
    m_errors = 0;
    m_newestError.clear();
}

} // namespace station
