#include "tests/results/Tables.h"

#include <QSqlRecord>

namespace testsupport {

namespace {

class FileConnection : public station::SqlConnection
{
public:
    explicit FileConnection(const QString &path)
        : SqlConnection(QStringLiteral("QSQLITE"))
    {
        database().setDatabaseName(path);
        open();
    }
};

} // namespace

QStringList rowsOf(station::SqlConnection &connection, const QString &question)
{
    QStringList rows;
    QSqlQuery query = connection.run(question);
    for (; query.isValid(); query.next()) {
        QStringList values;
        for (int column = 0; column < query.record().count(); ++column)
            values.append(query.isNull(column) ? QStringLiteral("-") : query.value(column).toString());
        rows.append(values.join(QLatin1Char('|')));
    }
    return rows;
}

QStringList rowsOfFile(const QString &path, const QString &question)
{
    FileConnection connection(path);
    return rowsOf(connection, question);
}

void runOnFile(const QString &path, const QStringList &statements)
{
    FileConnection connection(path);
    for (const QString &statement : statements)
        static_cast<void>(connection.run(statement));
}

} // namespace testsupport
