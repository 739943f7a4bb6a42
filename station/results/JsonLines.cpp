#include "station/results/JsonLines.h"

#include <QJsonDocument>

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
    : m_file(path)
{}

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
    const QString why = m_file.append(QJsonDocument(line).toJson(QJsonDocument::Compact));
    if (!why.isEmpty())
        lose(m_file.path(), why);
}

} // namespace station
