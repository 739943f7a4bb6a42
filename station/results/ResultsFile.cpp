#include "station/results/ResultsFile.h"

#include "station/StationError.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTextStream>
#include <QUuid>

#include <utility>

namespace station {

namespace {

QString now()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
}

QJsonObject begun(const ResultOwner &owner)
{
    QJsonObject line{{QStringLiteral("time"), now()}, {QStringLiteral("sequence"), owner.sequence}};
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

QString readableCall(const ResultOwner &owner, const KVKLuaCall &call)
{
    const QString answer = call.error ? QStringLiteral("error: ") + call.error->localizedDescription
                                      : platform::description(call.result);
    return QStringLiteral("%1: %2 -> %3").arg(owner.name(), call.name, answer);
}

} // namespace

QString ResultOwner::name() const
{
    if (system.isValid())
        return QStringLiteral("system %1").arg(platform::description(system));
    if (group.isValid())
        return QStringLiteral("group %1").arg(platform::description(group));
    return QStringLiteral("station");
}

QString outcomeText(KVKLuaOutcome outcome)
{
    switch (outcome) {
    case KVKLuaOutcome::Passed:
        return QStringLiteral("passed");
    case KVKLuaOutcome::Failed:
        return QStringLiteral("failed");
    case KVKLuaOutcome::Erred:
        return QStringLiteral("erred");
    case KVKLuaOutcome::Stopped:
        return QStringLiteral("stopped");
    }
    return {};
}

ResultsFile::ResultsFile(const QString &path, bool printsAnswers)
    : m_prints(printsAnswers)
{
    if (path.isEmpty())
        return;
    try {
        m_file.emplace(path);
    } catch (const StationError &problem) {
        throw StationError(QStringLiteral("--results: ") + problem.text());
    }
}

void ResultsFile::beginRun(const QString &station, const QString &configuration)
{
    const std::lock_guard lock(m_mutex);
    // Files of several stations are put together: a counter would name their runs alike.
    m_run = QUuid::createUuid().toString(QUuid::WithoutBraces);
    append({{QStringLiteral("run"), m_run},
            {QStringLiteral("station"), station},
            {QStringLiteral("configuration"), QFileInfo(configuration).absoluteFilePath()},
            {QStringLiteral("start"), now()}});
}

void ResultsFile::writeCall(const ResultOwner &owner, const KVKLuaCall &call)
{
    QJsonObject line = begun(owner);
    line.insert(QStringLiteral("call"), call.name);
    line.insert(QStringLiteral("result"), QJsonValue::fromVariant(call.result));
    line.insert(QStringLiteral("error"), errorValue(call.error));
    write(line, readableCall(owner, call));
}

void ResultsFile::writeEnd(const ResultOwner &owner, const KVKLuaEnd &end)
{
    QJsonObject line = begun(owner);
    line.insert(QStringLiteral("outcome"), outcomeText(end.outcome));
    line.insert(QStringLiteral("value"), QJsonValue::fromVariant(end.value));
    line.insert(QStringLiteral("message"), end.message);
    QString readable = QStringLiteral("%1: %2").arg(owner.name(), outcomeText(end.outcome));
    if (!end.message.isEmpty())
        readable += QStringLiteral(", ") + end.message;
    write(line, readable);
}

bool ResultsFile::hasFailed()
{
    const std::lock_guard lock(m_mutex);
    return m_failed;
}

void ResultsFile::write(QJsonObject line, const QString &readable)
{
    const std::lock_guard lock(m_mutex);
    if (!m_run.isEmpty())
        line.insert(QStringLiteral("run"), m_run);
    append(line);
    // Under the lock, so that lines of two sequences are not mixed.
    if (m_prints)
        QTextStream(stdout) << readable << Qt::endl;
}

/// Requires: the lock is held.
void ResultsFile::append(const QJsonObject &line)
{
    if (!m_file)
        return;
    const QString why = m_file->append(QJsonDocument(line).toJson(QJsonDocument::Compact));
    // Told once: each line after the first that is lost would say the same.
    if (why.isEmpty() || std::exchange(m_failed, true))
        return;
    QTextStream(stderr) << "station: results are lost: " << m_file->path() << ": " << why << Qt::endl;
}

} // namespace station
