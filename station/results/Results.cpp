#include "station/results/Results.h"

#include "station/base/StationError.h"
#include "station/results/JsonLines.h"
#include "station/results/PostgresResults.h"
#include "station/results/SqliteResults.h"

#include <QFileInfo>
#include <QTextStream>
#include <QUuid>

namespace station {

namespace {

QDateTime now()
{
    return QDateTime::currentDateTimeUtc();
}

QString readableCall(const ResultOwner &owner, const KVKLuaCall &call)
{
    const QString answer = call.error ? QStringLiteral("error: ") + call.error->localizedDescription
                                      : platform::description(call.result);
    return QStringLiteral("%1: %2 -> %3").arg(owner.name(), call.name, answer);
}

QString readableEnd(const ResultOwner &owner, const KVKLuaEnd &end)
{
    const QString outcome = QStringLiteral("%1: %2").arg(owner.name(), outcomeText(end.outcome));
    return end.message.isEmpty() ? outcome : outcome + QStringLiteral(", ") + end.message;
}

} // namespace

Results::Results(const ResultsTargets &targets, bool printsAnswers)
    : m_prints(printsAnswers)
{
    addFile(targets.file, QStringLiteral("--results"));
    if (isServerAddress(targets.database))
        addServer(targets);
    else
        addFile(targets.database, QStringLiteral("results.database"));
    for (const auto &sink : m_sinks)
        sink->onUnwritten([this] { tellWaiting(); });
}

Results::~Results()
{
    static_cast<void>(hasFailed());
    // The places go one after another, and tell of what is left; nobody may look at all of them any more.
    if (m_waiting)
        m_waiting->setListener({});
    for (const auto &sink : m_sinks)
        sink->onUnwritten({});
}

void Results::addServer(const ResultsTargets &targets)
{
    try {
        auto server = std::make_unique<PostgresResults>(ServerAddress(targets.database), targets.outbox);
        m_waiting = &server->state();
        m_sinks.push_back(std::move(server));
    } catch (const StationError &problem) {
        throw StationError(QStringLiteral("results.outbox: %1").arg(problem.text()));
    }
}

void Results::addFile(const QString &path, const QString &key)
{
    if (path.isEmpty())
        return;
    try {
        if (isSqlitePath(path))
            m_sinks.push_back(std::make_unique<SqliteResults>(path));
        else
            m_sinks.push_back(std::make_unique<JsonLines>(path));
    } catch (const StationError &problem) {
        throw StationError(QStringLiteral("%1: %2").arg(key, problem.text()));
    }
}

template <class Event>
void Results::write(const Event &event)
{
    for (const auto &sink : m_sinks)
        sink->write(event);
}

void Results::beginRun(const QString &station, const QString &configuration, const QString &operatorBadge)
{
    // Results of several stations are put together: a counter would name their runs alike.
    const QString run = QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        const std::lock_guard lock(m_mutex);
        m_run = run;
        m_operator = operatorBadge;
        m_calls.clear();
        m_refusals = 0;
    }
    write(RunBegun{run, station, QFileInfo(configuration).absoluteFilePath(), operatorBadge, now()});
}

void Results::beginSequence(const ResultOwner &owner)
{
    SequenceBegun sequence{{}, owner, now()};
    {
        const std::lock_guard lock(m_mutex);
        sequence.run = m_run;
    }
    write(sequence);
}

void Results::writeCall(const ResultOwner &owner, const KVKLuaCall &call, const CallStart &start)
{
    const auto took = std::chrono::steady_clock::now() - start.point;
    CallDone done{{}, owner, call, 0, {}, start.time, now(), 0};
    done.milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(took).count();
    {
        const std::lock_guard lock(m_mutex);
        done.run = m_run;
        done.operatorBadge = m_operator;
        done.number = ++m_calls[owner.number];
    }
    write(done);
    // After it is safe: what is printed is there.
    print(readableCall(owner, call));
}

void Results::writeEnd(const ResultOwner &owner, const KVKLuaEnd &end)
{
    SequenceDone done{{}, owner, end, now()};
    {
        const std::lock_guard lock(m_mutex);
        done.run = m_run;
    }
    write(done);
    print(readableEnd(owner, end));
}

void Results::writeRefusal(const RefusedEntry &entry)
{
    EntryRefused refused{{}, entry, 0, {}, now()};
    {
        const std::lock_guard lock(m_mutex);
        // What is scanned before the first run belongs to no answer that could be wanted.
        if (m_run.isEmpty())
            return;
        refused.run = m_run;
        refused.operatorBadge = m_operator;
        refused.number = ++m_refusals;
    }
    write(refused);
}

bool Results::hasFailed()
{
    bool failed = false;
    for (const auto &sink : m_sinks) {
        sink->settle();
        failed = failed || sink->hasFailed();
    }
    return failed;
}

void Results::tryAgain()
{
    for (const auto &sink : m_sinks)
        sink->tryAgain();
}

void Results::onWaiting(OutboxState::Listener listener)
{
    {
        const std::lock_guard lock(m_waitingMutex);
        m_listener = std::move(listener);
    }
    if (m_waiting) {
        m_waiting->setListener([this](const QString &text, const QString &trouble) {
            {
                const std::lock_guard lock(m_waitingMutex);
                m_outboxText = text;
                m_outboxTrouble = trouble;
            }
            tellWaiting();
        });
    }
    tellWaiting();
}

void Results::tellWaiting()
{
    const std::lock_guard lock(m_waitingMutex);
    if (!m_listener)
        return;
    QStringList texts;
    QStringList troubles;
    qsizetype count = 0;
    for (const auto &sink : m_sinks) {
        const ResultsSink::Unwritten unwritten = sink->unwritten();
        count += unwritten.count;
        if (unwritten.count > 0)
            troubles.append(unwritten.why);
    }
    if (count > 0)
        texts.append(count == 1 ? QStringLiteral("1 result is not written yet")
                                : QStringLiteral("%1 results are not written yet").arg(count));
    if (!m_outboxText.isEmpty())
        texts.append(m_outboxText);
    if (!m_outboxTrouble.isEmpty())
        troubles.append(m_outboxTrouble);
    m_listener(texts.join(QStringLiteral("; ")), troubles.join(QStringLiteral("; ")));
}

void Results::print(const QString &line)
{
    if (!m_prints)
        return;
    const std::lock_guard lock(m_printing);
    QTextStream(stdout) << line << Qt::endl;
}

} // namespace station
