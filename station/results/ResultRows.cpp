#include "station/results/ResultRows.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace station {

namespace {

const QString ClickedButton = QStringLiteral("clickedButton");

QJsonValue timeValue(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

/// Nothing rather than an empty text: "no badge" and "no slot" are told from one that is empty by looking
/// once.
QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(storableText(text));
}

QJsonValue numberOrNull(const platform::Value &number)
{
    return number.isValid() ? QJsonValue(number.toLongLong()) : QJsonValue();
}

/// A text as it is, anything else as JSON.
QJsonValue plainValue(const platform::Value &value)
{
    if (!value.isValid() || value.isNull())
        return {};
    return value.typeId() == QMetaType::QString ? storableText(value.toString()) : jsonText(value);
}

ResultRow sequenceKey(const QString &kind, const QString &run, const ResultOwner &owner)
{
    return {kind, {{QStringLiteral("run"), run}, {QStringLiteral("sequence"), owner.number}}};
}

/// What a panel of a group calls the entries of its slots: the configuration's label.
QJsonValue labelOf(const KVKLuaCall &call)
{
    for (const platform::Value &argument : call.arguments) {
        const QString label = argument.toMap().value(QStringLiteral("label")).toString();
        if (!label.isEmpty())
            return storableText(label);
    }
    return {};
}

/// An answer names its values by label on a system's panel, and by slot on a group's.
ResultRow answerRow(const CallDone &call, const QString &name, const platform::Value &value, int position)
{
    ResultRow row = sequenceKey(QStringLiteral("answer"), call.run, call.owner);
    row.values.insert(QStringLiteral("call"), call.number);
    row.values.insert(QStringLiteral("position"), position);
    row.values.insert(QStringLiteral("value"), plainValue(value));
    const QStringList &slotNames = call.owner.slotNames;
    const bool namesSlot = !call.owner.system.isValid() && slotNames.contains(name);
    row.values.insert(QStringLiteral("label"), namesSlot ? labelOf(call.call) : textOrNull(name));
    if (namesSlot)
        row.values.insert(QStringLiteral("slot"), storableText(name));
    else if (slotNames.size() == 1)
        row.values.insert(QStringLiteral("slot"), storableText(slotNames.constFirst()));
    return row;
}

void insertError(ResultRow &row, const std::optional<platform::Error> &error)
{
    if (!error)
        return;
    row.values.insert(QStringLiteral("error_domain"), storableText(error->domain));
    row.values.insert(QStringLiteral("error_code"), error->code);
    row.values.insert(QStringLiteral("error_message"), storableText(error->localizedDescription));
}

} // namespace

QString storableText(const QString &text)
{
    QString stored;
    stored.reserve(text.size());
    const auto escape = [&stored](QChar unit) {
        stored += QStringLiteral("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0'));
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        if (unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            stored += unit;
            stored += text.at(++i);
        } else if (unit.isNull() || unit.isSurrogate()) {
            escape(unit);
        } else {
            stored += unit;
        }
    }
    return stored;
}

QString jsonText(const platform::Value &value)
{
    // A document is an object or a list: the brackets go.
    const QByteArray list =
        QJsonDocument(QJsonArray{QJsonValue::fromVariant(value)}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

QString textOf(const ResultRows &rows)
{
    QJsonArray list;
    for (const ResultRow &row : rows)
        list.append(QJsonObject{{QStringLiteral("kind"), row.kind}, {QStringLiteral("values"), row.values}});
    return QString::fromUtf8(QJsonDocument(list).toJson(QJsonDocument::Compact));
}

ResultRows rowsOf(const RunBegun &run, const QString &stationId)
{
    return {{QStringLiteral("run"),
             {{QStringLiteral("run"), run.run},
              {QStringLiteral("station"), storableText(run.station)},
              {QStringLiteral("station_id"), textOrNull(stationId)},
              {QStringLiteral("configuration"), storableText(run.configuration)},
              {QStringLiteral("operator"), textOrNull(run.operatorBadge)},
              {QStringLiteral("started"), timeValue(run.time)}}}};
}

ResultRows rowsOf(const SequenceBegun &sequence)
{
    const ResultOwner &owner = sequence.owner;
    ResultRow row = sequenceKey(QStringLiteral("sequence"), sequence.run, owner);
    row.values.insert(QStringLiteral("script"), storableText(owner.sequence));
    row.values.insert(QStringLiteral("system"), numberOrNull(owner.system));
    row.values.insert(QStringLiteral("group_name"), textOrNull(owner.groupName));
    if (owner.system.isValid() && owner.slotNames.size() == 1)
        row.values.insert(QStringLiteral("slot"), storableText(owner.slotNames.constFirst()));
    row.values.insert(QStringLiteral("started"), timeValue(sequence.time));
    return {row};
}

ResultRows rowsOf(const CallDone &call)
{
    ResultRow row = sequenceKey(QStringLiteral("call"), call.run, call.owner);
    row.values.insert(QStringLiteral("call"), call.number);
    row.values.insert(QStringLiteral("function"), storableText(call.call.name));
    row.values.insert(QStringLiteral("started"), timeValue(call.start));
    row.values.insert(QStringLiteral("ended"), timeValue(call.time));
    row.values.insert(QStringLiteral("milliseconds"), call.milliseconds);
    row.values.insert(QStringLiteral("operator"), textOrNull(call.operatorBadge));
    row.values.insert(QStringLiteral("result"), jsonText(call.call.result));
    insertError(row, call.call.error);
    const platform::Dictionary answer = call.call.result.toMap();
    row.values.insert(QStringLiteral("clicked_button"), plainValue(answer.value(ClickedButton)));
    ResultRows rows{row};
    int position = 0;
    for (auto value = answer.cbegin(); value != answer.cend(); ++value) {
        if (value.key() != ClickedButton)
            rows.append(answerRow(call, value.key(), value.value(), ++position));
    }
    return rows;
}

ResultRows rowsOf(const SequenceDone &sequence)
{
    ResultRow row = sequenceKey(QStringLiteral("end"), sequence.run, sequence.owner);
    row.values.insert(QStringLiteral("ended"), timeValue(sequence.time));
    row.values.insert(QStringLiteral("outcome"), outcomeText(sequence.end.outcome));
    row.values.insert(QStringLiteral("value"), jsonText(sequence.end.value));
    row.values.insert(QStringLiteral("message"), storableText(sequence.end.message));
    if (!sequence.end.traceback.isEmpty())
        row.values.insert(QStringLiteral("traceback"), storableText(sequence.end.traceback));
    return {row};
}

ResultRows rowsOf(const EntryRefused &refusal)
{
    const RefusedEntry &entry = refusal.entry;
    return {{QStringLiteral("refusal"),
             {{QStringLiteral("run"), refusal.run},
              {QStringLiteral("refusal"), refusal.number},
              {QStringLiteral("refused"), timeValue(refusal.time)},
              {QStringLiteral("kind"), storableText(entry.kind)},
              {QStringLiteral("text"), storableText(entry.text)},
              {QStringLiteral("system"), numberOrNull(entry.system)},
              {QStringLiteral("group_name"), textOrNull(entry.groupName)},
              {QStringLiteral("slot"), textOrNull(entry.slot)},
              {QStringLiteral("operator"), textOrNull(refusal.operatorBadge)}}}};
}

} // namespace station
