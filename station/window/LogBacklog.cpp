#include "station/window/LogBacklog.h"

#include "station/look/LineBreaks.h"
#include "station/window/OperatorText.h"

#include <QDateTime>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

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

QTime timeOfDay(std::chrono::system_clock::time_point time)
{
    const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(since.count()).time();
}

} // namespace

LogBacklog::LogBacklog(qsizetype mostKept, qsizetype mostAtOnce)
    : m_mostKept(mostKept)
    , m_mostAtOnce(mostAtOnce)
{}

bool LogBacklog::add(std::span<const KVKLogRecord> records)
{
    // Without the lock: whoever takes lines is the main thread.
    std::vector<Waiting> lines;
    lines.reserve(records.size());
    for (const KVKLogRecord &record : records)
        lines.push_back({{record.level, {}, oneLine(record.message), record.systems}, record.time});
    const auto isError = [](const KVKLogRecord &record) { return record.level == KVKLogLevel::Error; };
    const auto errors = static_cast<int>(std::ranges::count_if(records, isError));
    const auto newest = std::find_if(records.rbegin(), records.rend(), isError);
    const QString error = errors > 0 ? shortened(operatorText(newest->message)) : QString();
    const std::scoped_lock lock(m_mutex);
    if (errors > 0) {
        m_errors += errors;
        m_newestError = error;
    }
    std::ranges::move(lines, std::back_inserter(m_lines));
    while (std::ssize(m_lines) > m_mostKept) {
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
        Waiting &next = m_lines.front();
        next.line.time = timeOfDay(next.time);
        share.lines.append(std::move(next.line));
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
