#include "station/results/ResultsSink.h"

#include "kovan/KovanLogging/KVKLogging.h"

#include <QTextStream>

#include <utility>

namespace station {

namespace {

void say(const QString &text)
{
    QTextStream(stderr) << "station: " << text << Qt::endl;
    KVKLogEvent(KVKLogLevel::Error, "%@", {text});
}

/// What refuses a file names it, too.
QString named(const QString &name, const QString &why)
{
    const QString beginning = name + QStringLiteral(": ");
    return why.startsWith(beginning) ? why : beginning + why;
}

} // namespace

ResultsSink::Unwritten ResultsSink::unwritten() const
{
    const std::lock_guard lock(m_unwrittenMutex);
    return m_unwritten;
}

void ResultsSink::tellUnwritten(const QString &name, qsizetype count, const QString &why)
{
    const QString trouble = count > 0 ? named(name, why) : QString();
    Unwritten before;
    {
        const std::lock_guard lock(m_unwrittenMutex);
        before = std::exchange(m_unwritten, Unwritten{count, trouble});
    }
    if (count == before.count && trouble == before.why)
        return;
    if (count > 0 && before.count == 0)
        say(QStringLiteral("results cannot be written: ") + trouble);
    else if (count == 0)
        KVKLogEvent(KVKLogLevel::Default, "results are written again: %@", {name});
    if (m_listener)
        m_listener();
}

void ResultsSink::noteKept(const QString &name, const QString &event)
{
    KVKLogEvent(KVKLogLevel::Error, "not yet in %@: %@", {name, event});
    // Until the result can be written it stands in the log alone, and what it belongs to is about to be
    // accepted.
    static_cast<void>(KVKLogGetProxy()->flush(KVKLogProxy::EndLimit));
}

void ResultsSink::lose(const QString &name, const QString &why)
{
    if (!m_failed.exchange(true))
        say(QStringLiteral("results are lost: ") + named(name, why));
}

} // namespace station
