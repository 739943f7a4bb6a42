#include "station/results/JsonLines.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "station/base/StationError.h"

#include <QHash>
#include <QJsonDocument>

#include <algorithm>
#include <utility>

namespace station {

namespace {

QString timeText(const QDateTime &time)
{
    return time.toString(Qt::ISODateWithMs);
}

QJsonObject begun(const QString &run, const ResultOwner &owner, const QDateTime &time)
{
    QJsonObject line{{QStringLiteral("time"), timeText(time)}, {QStringLiteral("sequence"), owner.sequence}};
    if (!run.isEmpty())
        line.insert(QStringLiteral("run"), run);
    if (owner.system.isValid())
        line.insert(QStringLiteral("system"), QJsonValue::fromVariant(owner.system));
    if (owner.group.isValid())
        line.insert(QStringLiteral("group"), QJsonValue::fromVariant(owner.group));
    return line;
}

QJsonValue errorValue(const std::optional<platform::Error> &error)
{
    if (!error)
        return QJsonValue::Null;
    QJsonObject object = QJsonObject::fromVariantMap(error->additions);
    object.insert(QStringLiteral("domain"), error->domain);
    object.insert(QStringLiteral("code"), error->code);
    object.insert(QStringLiteral("message"), error->localizedDescription);
    return object;
}

void insertOperator(QJsonObject &line, const QString &badge)
{
    if (!badge.isEmpty())
        line.insert(QStringLiteral("operator"), badge);
}

} // namespace

JsonLines::JsonLines(const QString &path)
    : m_file(std::make_unique<AppendedFile>(path))
{}

JsonLines::~JsonLines()
{
    JsonLines::settle();
}

void JsonLines::write(const RunBegun &run)
{
    QJsonObject line{{QStringLiteral("run"), run.run},
                     {QStringLiteral("station"), run.station},
                     {QStringLiteral("configuration"), run.configuration},
                     {QStringLiteral("start"), timeText(run.time)}};
    insertOperator(line, run.operatorBadge);
    append(line);
}

void JsonLines::write(const CallDone &call)
{
    QJsonObject line = begun(call.run, call.owner, call.time);
    line.insert(QStringLiteral("call"), call.call.name);
    line.insert(QStringLiteral("result"), QJsonValue::fromVariant(call.call.result));
    line.insert(QStringLiteral("error"), errorValue(call.call.error));
    insertOperator(line, call.operatorBadge);
    append(line);
}

void JsonLines::write(const SequenceDone &sequence)
{
    QJsonObject line = begun(sequence.run, sequence.owner, sequence.time);
    line.insert(QStringLiteral("outcome"), outcomeText(sequence.end.outcome));
    line.insert(QStringLiteral("value"), QJsonValue::fromVariant(sequence.end.value));
    line.insert(QStringLiteral("message"), sequence.end.message);
    if (!sequence.end.traceback.isEmpty())
        line.insert(QStringLiteral("traceback"), sequence.end.traceback);
    append(line);
}

void JsonLines::append(const QJsonObject &line)
{
    const std::lock_guard lock(m_mutex);
    m_kept.push_back(QJsonDocument(line).toJson(QJsonDocument::Compact));
    const QString why = writeKept();
    if (!why.isEmpty())
        noteKept(m_file->path(), QString::fromUtf8(m_kept.back()));
}

void JsonLines::tryAgain()
{
    const std::lock_guard lock(m_mutex);
    static_cast<void>(writeKept());
}

void JsonLines::settle()
{
    const std::lock_guard lock(m_mutex);
    const QString why = writeKept();
    if (!why.isEmpty())
        lose(m_file->path(), why);
}

/// Returns why something is not in the file; nothing when all is.
QString JsonLines::writeKept()
{
    QString why = findFile();
    while (why.isEmpty() && !m_kept.empty()) {
        why = m_file->add(m_kept.front());
        if (why.isEmpty())
            m_kept.pop_front();
    }
    // What was in a file that has gone waits as well, until there is one in its place.
    const auto count = static_cast<qsizetype>(m_kept.size());
    tellUnwritten(m_file->path(), why.isEmpty() ? 0 : std::max<qsizetype>(count, 1), why);
    return why;
}

/// Sees to it that what is open is what the path leads to.
QString JsonLines::findFile()
{
    const QString gone = m_file->lossOfPath();
    if (gone.isEmpty()) {
        if (m_file->wasCut())
            lose(m_file->path(), QStringLiteral("the file has been truncated"));
        return {};
    }
    try {
        const QString why = moveTo(std::make_unique<AppendedFile>(m_file->path()));
        if (why.isEmpty())
            KVKLogEvent(KVKLogLevel::Default, "results go on in a new file: %@: %@", {m_file->path(), gone});
        return why;
    } catch (const StationError &problem) {
        return problem.text();
    }
}

/// A file that was moved has kept what it held. Otherwise the new one gets what it lacks, however often this
/// is begun.
QString JsonLines::moveTo(std::unique_ptr<AppendedFile> next)
{
    if (m_file->isUnlinked()) {
        QHash<QByteArray, int> there;
        for (const QByteArray &line : next->lines())
            ++there[line];
        for (const QByteArray &line : m_file->lines()) {
            if (there[line]-- > 0)
                continue;
            const QString why = next->add(line);
            if (!why.isEmpty())
                return why;
        }
    }
    m_file = std::move(next);
    return {};
}

} // namespace station
