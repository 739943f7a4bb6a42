#include "station/results/RowWriter.h"

#include <QStringList>

namespace station {

namespace {

/// What is done with a row, and the order in which its values are bound. Names of columns stand here alone:
/// what comes from outside is only ever bound.
struct Statement
{
    QString text;
    QStringList columns;
};

Statement insertion(const QString &table, const QStringList &columns)
{
    const QStringList places(columns.size(), QStringLiteral("?"));
    return {QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) ON CONFLICT DO NOTHING")
                .arg(table, columns.join(QStringLiteral(", ")), places.join(QStringLiteral(", "))),
            columns};
}

QStringList names(const char *columns)
{
    return QString::fromLatin1(columns).split(QLatin1Char(' '));
}

const Statement &statementOf(const QString &kind)
{
    static const std::map<QString, Statement> statements{
        {QStringLiteral("run"),
         insertion(QStringLiteral("runs"), names("run station station_id configuration operator started"))},
        {QStringLiteral("sequence"),
         insertion(QStringLiteral("sequences"), names("run sequence script system group_name slot started"))},
        {QStringLiteral("end"),
         {QStringLiteral("UPDATE sequences SET ended = ?, outcome = ?, value = ?, message = ?,"
                         " traceback = ? WHERE run = ? AND sequence = ?"),
          names("ended outcome value message traceback run sequence")}},
        {QStringLiteral("call"),
         insertion(QStringLiteral("calls"),
                   names("run sequence call function started ended milliseconds operator result"
                         " clicked_button error_domain error_code error_message"))},
        {QStringLiteral("answer"),
         insertion(QStringLiteral("answers"), names("run sequence call position slot label value"))},
        {QStringLiteral("refusal"),
         insertion(QStringLiteral("refusals"),
                   names("run refusal refused kind text system group_name slot operator"))}};
    const auto found = statements.find(kind);
    if (found == statements.end())
        throw SqlError(QStringLiteral("there are no rows of the kind '%1'").arg(kind), SqlError::About::Row);
    return found->second;
}

QVariant bindable(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    if (value.isDouble())
        return value.toInteger();
    return QVariant(QMetaType(QMetaType::QString));
}

} // namespace

void RowWriter::write(const ResultRows &rows)
{
    for (const ResultRow &row : rows)
        write(row);
}

void RowWriter::write(const ResultRow &row)
{
    const Statement &statement = statementOf(row.kind);
    auto query = m_queries.find(row.kind);
    if (query == m_queries.end())
        query = m_queries.emplace(row.kind, m_connection.prepared(statement.text)).first;
    for (qsizetype i = 0; i < statement.columns.size(); ++i)
        query->second.bindValue(static_cast<int>(i), bindable(row.values.value(statement.columns.at(i))));
    SqlConnection::run(query->second);
    // It would be lost without a word.
    if (row.kind == QLatin1String("end") && query->second.numRowsAffected() == 0)
        throw SqlError(QStringLiteral("the sequence that has ended is not there"), SqlError::About::Row);
}

} // namespace station
