#include "station/report/FiguresQueries.h"

#include "station/results/ResultRows.h"
#include "station/results/Schema.h"

#include <QHash>
#include <QSet>
#include <QSqlError>

#include <algorithm>
#include <tuple>

namespace station::report {

namespace {

/// What a panel asks takes a few milliseconds at least, though a machine answers; what a loop gives again is
/// there at once.
constexpr qint64 AtOnce = 2;

/// Four columns and one of all sequences, read by outcomesFrom.
const QString OutcomeColumns = QStringLiteral("count(*) FILTER (WHERE outcome = 'passed') AS passed,"
                                              " count(*) FILTER (WHERE outcome = 'failed') AS failed,"
                                              " count(*) FILTER (WHERE outcome = 'erred') AS erred,"
                                              " count(*) FILTER (WHERE outcome = 'stopped') AS stopped,"
                                              " count(*) AS sequences");

Outcomes outcomesFrom(const QSqlQuery &row, int column)
{
    Outcomes outcomes{row.value(column).toLongLong(), row.value(column + 1).toLongLong(),
                      row.value(column + 2).toLongLong(), row.value(column + 3).toLongLong(), 0};
    outcomes.open = row.value(column + 4).toLongLong() - outcomes.ended();
    return outcomes;
}

/// Calls the function for each row. A file that is spoilt in its midst ends a query early, which is no end.
template <typename Function>
void forEach(QSqlQuery query, const Function &function)
{
    for (; query.isValid(); query.next())
        function(query);
    if (query.lastError().isValid())
        throw SqlError(query.lastError());
}

class Queries
{
public:
    Queries(SqlConnection &connection, int version)
        : m_connection(connection)
        , m_hasRefusals(version >= 2)
    {}

    QList<RunFigures> runs();
    QList<YieldFigures> groupYields();
    QList<YieldFigures> slotYields();
    void times(Figures &figures);
    QList<RefusalFigures> refusals();
    qint64 answers()
    {
        return m_connection.value(QStringLiteral("SELECT count(*) FROM answers")).toLongLong();
    }
    QList<SerialAnswer> answersOf(const QString &serial);

private:
    /// The column of an operator, which the first version does not have.
    [[nodiscard]] QString operatorOf(const char *table) const
    {
        return m_hasRefusals ? QLatin1String(table) + QStringLiteral(".operator") : QStringLiteral("NULL");
    }
    [[nodiscard]] QSet<QString> unitsOf(const QString &serial);
    QSqlQuery ask(const QString &statement, const QString &serial);

    SqlConnection &m_connection;
    bool m_hasRefusals;
};

QList<RunFigures> Queries::runs()
{
    QList<RunFigures> runs;
    forEach(m_connection.run(
                QStringLiteral("SELECT run, station, %1, configuration, started, ends.ended, systems,"
                               " passed, failed, erred, stopped, sequences FROM runs LEFT JOIN"
                               " (SELECT run, count(DISTINCT system) AS systems, max(ended) AS ended, %2"
                               "  FROM sequences GROUP BY run) AS ends USING (run)"
                               " ORDER BY started DESC, runs.rowid DESC")
                    .arg(operatorOf("runs"), OutcomeColumns)),
            [&runs](const QSqlQuery &row) {
                RunFigures run{row.value(0).toString(),   row.value(1).toString(), row.value(2).toString(),
                               row.value(3).toString(),   row.value(4).toString(), row.value(5).toString(),
                               row.value(6).toLongLong(), outcomesFrom(row, 7)};
                if (run.sequences.open > 0)
                    run.ended.clear();
                runs.append(run);
            });
    return runs;
}

QList<YieldFigures> Queries::groupYields()
{
    QList<YieldFigures> yields;
    forEach(m_connection.run(QStringLiteral("SELECT station, group_name, %1 FROM sequences"
                                            " LEFT JOIN runs USING (run) GROUP BY 1, 2"
                                            " ORDER BY 1, min(system) IS NULL, group_name IS NULL,"
                                            " min(system), group_name")
                                 .arg(OutcomeColumns)),
            [&yields](const QSqlQuery &row) {
                yields.append({row.value(0).toString(), row.value(1).toString(), {}, outcomesFrom(row, 2)});
            });
    return yields;
}

QList<YieldFigures> Queries::slotYields()
{
    QList<YieldFigures> yields;
    forEach(m_connection.run(QStringLiteral("SELECT station, group_name, slot, %1 FROM sequences"
                                            " LEFT JOIN runs USING (run) WHERE slot IS NOT NULL"
                                            " GROUP BY 1, 2, 3 ORDER BY 1, min(system)")
                                 .arg(OutcomeColumns)),
            [&yields](const QSqlQuery &row) {
                yields.append({row.value(0).toString(), row.value(1).toString(), row.value(2).toString(),
                               outcomesFrom(row, 3)});
            });
    return yields;
}

/// Adds a call to the figures that have the same names, which come to stand where the first one came.
void addCall(QList<TimeFigures> &list, QHash<QStringList, qsizetype> &places, const TimeFigures &names,
             qint64 time, bool isAnswered)
{
    const QStringList key{names.station, names.function, names.group, names.slot};
    const auto place = places.constFind(key);
    if (place == places.cend()) {
        places.insert(key, list.size());
        list.append(names);
    }
    TimeFigures &figures = list[place == places.cend() ? list.size() - 1 : *place];
    ++figures.calls;
    if (!isAnswered)
        ++figures.unanswered;
    else if (time < AtOnce)
        ++figures.repeated;
    else
        figures.times.append(time);
}

void Queries::times(Figures &figures)
{
    QHash<QStringList, qsizetype> functions;
    QHash<QStringList, qsizetype> slotPlaces;
    forEach(m_connection.run(QStringLiteral("SELECT station, function, group_name, slot, milliseconds,"
                                            " error_domain IS NULL FROM calls"
                                            " LEFT JOIN sequences USING (run, sequence)"
                                            " LEFT JOIN runs USING (run) WHERE function GLOB 'show*'"
                                            " ORDER BY station, group_name IS NULL, system IS NULL, system,"
                                            " group_name")),
            [&](const QSqlQuery &row) {
                TimeFigures names;
                names.station = row.value(0).toString();
                const qint64 time = row.value(4).toLongLong();
                const bool isAnswered = row.value(5).toBool();
                names.function = row.value(1).toString();
                addCall(figures.functions, functions, names, time, isAnswered);
                names.function.clear();
                names.group = row.value(2).toString();
                names.slot = row.value(3).toString();
                addCall(figures.slotTimes, slotPlaces, names, time, isAnswered);
            });
    for (QList<TimeFigures> *list : {&figures.functions, &figures.slotTimes}) {
        for (TimeFigures &each : *list)
            std::sort(each.times.begin(), each.times.end());
    }
    std::sort(figures.functions.begin(), figures.functions.end(),
              [](const TimeFigures &a, const TimeFigures &b) {
                  return std::tie(a.station, a.function) < std::tie(b.station, b.function);
              });
}

QList<RefusalFigures> Queries::refusals()
{
    QList<RefusalFigures> refusals;
    if (!m_hasRefusals)
        return refusals;
    forEach(m_connection.run(QStringLiteral("SELECT kind, count(*), count(DISTINCT run), max(refused)"
                                            " FROM refusals GROUP BY kind ORDER BY 2 DESC, 1")),
            [&refusals](const QSqlQuery &row) {
                refusals.append({row.value(0).toString(), row.value(1).toLongLong(),
                                 row.value(2).toLongLong(), row.value(3).toString()});
            });
    return refusals;
}

QSqlQuery Queries::ask(const QString &statement, const QString &serial)
{
    QSqlQuery query = m_connection.prepared(statement);
    query.addBindValue(serial);
    SqlConnection::run(query);
    query.next();
    return query;
}

/// What all answers of a unit have in common: the run and the slot; the sequence where there is no slot.
QString unitOf(const QString &run, const QVariant &group, const QVariant &slot, const QVariant &sequence)
{
    const QString where = slot.isNull() ? sequence.toString() : group.toString() + QChar(1) + slot.toString();
    return run + QChar(slot.isNull() ? 2 : 1) + where;
}

QSet<QString> Queries::unitsOf(const QString &serial)
{
    QSet<QString> units;
    forEach(
        ask(QStringLiteral("SELECT DISTINCT answers.run, group_name, coalesce(answers.slot, sequences.slot),"
                           " answers.sequence FROM answers LEFT JOIN sequences USING (run, sequence)"
                           " WHERE answers.value = ?"),
            serial),
        [&units](const QSqlQuery &row) {
            units.insert(unitOf(row.value(0).toString(), row.value(1), row.value(2), row.value(3)));
        });
    return units;
}

QList<SerialAnswer> Queries::answersOf(const QString &serial)
{
    const QSet<QString> units = unitsOf(serial);
    QList<SerialAnswer> answers;
    forEach(ask(QStringLiteral("SELECT calls.run, calls.ended, station, %1, script, group_name,"
                               " coalesce(answers.slot, sequences.slot), function, label,"
                               " CASE WHEN position IS NULL THEN result ELSE answers.value END,"
                               " clicked_button, error_message, outcome, sequence FROM calls"
                               " LEFT JOIN answers USING (run, sequence, call)"
                               " LEFT JOIN sequences USING (run, sequence) LEFT JOIN runs USING (run)"
                               " WHERE calls.run IN (SELECT run FROM answers WHERE value = ?)"
                               " AND (position IS NOT NULL OR function GLOB 'show*')"
                               " ORDER BY runs.started, run, calls.ended, sequence, call, position")
                    .arg(operatorOf("calls")),
                serial),
            [&](const QSqlQuery &row) {
                const auto text = [&row](int column) { return row.value(column).toString(); };
                SerialAnswer answer{text(0), text(1), text(2), text(3),  text(4),  text(5), text(6),
                                    text(7), text(8), text(9), text(10), text(11), text(12)};
                answer.isOfUnit = units.contains(unitOf(text(0), row.value(5), row.value(6), row.value(13)));
                answers.append(answer);
            });
    return answers;
}

/// The version of the tables; nothing where there are none.
std::optional<int> versionOf(SqlConnection &connection)
{
    if (connection.value(QStringLiteral("SELECT count(*) FROM sqlite_master")).toInt() == 0)
        return std::nullopt;
    if (connection.value(QStringLiteral("PRAGMA application_id")).toInt() != schema::ApplicationId)
        throw SqlError(QStringLiteral("the file holds something else than results"));
    const int version = connection.value(QStringLiteral("PRAGMA user_version")).toInt();
    schema::refuseNewer(version);
    return version;
}

} // namespace

Figures queryFigures(SqlConnection &connection, const QString &serial)
{
    SqlTransaction transaction(connection, QStringLiteral("BEGIN"));
    Figures figures;
    figures.serial = storableText(serial);
    const std::optional<int> version = versionOf(connection);
    if (!version)
        return figures;
    Queries queries(connection, *version);
    figures.runs = queries.runs();
    figures.groupYields = queries.groupYields();
    figures.slotYields = queries.slotYields();
    queries.times(figures);
    figures.refusals = queries.refusals();
    figures.answers = queries.answers();
    if (!serial.isEmpty())
        figures.serialAnswers = queries.answersOf(figures.serial);
    return figures;
}

} // namespace station::report
