#include "station/base/StationError.h"
#include "station/report/FiguresReader.h"
#include "station/report/HtmlPage.h"
#include "station/report/TableWriters.h"
#include "station/results/Schema.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <optional>

#include "fuzz/Surroundings.h"
#include "fuzz/Target.h"
#include "fuzz/Values.h"

using namespace station::report;
using station::SqlConnection;

namespace {

using fuzz::Input;
using fuzz::must;

const QStringList Tables{"runs", "sequences", "calls", "answers", "refusals"};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    must(file.open(QIODevice::ReadOnly), "a file can be read");
    return file.readAll();
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    must(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "a file can be written");
}

std::unique_ptr<SqlConnection> connectionTo(const QString &path)
{
    auto connection = std::make_unique<SqlConnection>(QStringLiteral("QSQLITE"));
    connection->database().setDatabaseName(path);
    connection->open();
    connection->run(QStringLiteral("PRAGMA journal_mode = OFF"));
    connection->run(QStringLiteral("PRAGMA synchronous = OFF"));
    return connection;
}

/// A value as a station would write it into a column, or not at all.
QVariant cellFrom(Input &input, const QString &column)
{
    if (input.below(8) == 0)
        return fuzz::valueFrom(input, 0);
    if (column == QLatin1String("started") || column == QLatin1String("ended") ||
        column == QLatin1String("refused"))
        return input.textLike(
            {"2026-11-21T08:00:00.000Z", "2026-11-22T08:00:05.125Z", "1026-01-01T00:00:00.000Z"});
    if (column == QLatin1String("outcome"))
        return input.textLike({"passed", "failed", "erred", "stopped"});
    if (column == QLatin1String("function"))
        return input.textLike({"showView", "showGroupView", "getData"});
    if (column == QLatin1String("run"))
        return input.textLike({"r1", "r2"});
    if (column == QLatin1String("value") || column == QLatin1String("label") ||
        column == QLatin1String("slot"))
        return input.textLike({"SN1", "S1", "=1+1", "<b>", "a\"b,c\r\n"});
    return input.truth() ? QVariant(qlonglong{input.integer()}) : QVariant(input.text());
}

/// Puts rows into the tables of a file; one that a table refuses is left out.
void fill(const QString &path, Input &input)
{
    const auto connection = connectionTo(path);
    for (int left = input.below(24); left > 0; --left) {
        const QString table = Tables.at(input.below(static_cast<int>(Tables.size())));
        QStringList columns;
        QStringList places;
        QVariantList values;
        QSqlQuery names =
            connection->run(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table));
        for (; names.isValid(); names.next()) {
            columns.append(names.value(0).toString());
            places.append(QStringLiteral("?"));
            values.append(cellFrom(input, columns.constLast()));
        }
        QSqlQuery row = connection->prepared(QStringLiteral("INSERT OR IGNORE INTO %1 (%2) VALUES (%3)")
                                                 .arg(table, columns.join(','), places.join(',')));
        for (const QVariant &value : std::as_const(values))
            row.addBindValue(value);
        try {
            SqlConnection::run(row);
        } catch (const station::SqlError &) {
            // What a column must have was missing.
        }
    }
}

void addsUp(const Outcomes &outcomes)
{
    must(outcomes.passed >= 0 && outcomes.failed >= 0 && outcomes.erred >= 0 && outcomes.stopped >= 0 &&
             outcomes.open >= 0,
         "no outcome is there less than no times");
    const auto yield = outcomes.yield();
    must(yield.has_value() == (outcomes.ended() > 0), "a yield needs something that has ended");
    must(!yield || (*yield >= 0.0 && *yield <= 1.0), "a yield is a part of all");
}

void addUp(const Figures &figures)
{
    for (const RunFigures &run : figures.runs)
        addsUp(run.sequences);
    for (const QList<YieldFigures> &yields : {figures.groupYields, figures.slotYields}) {
        for (const YieldFigures &yield : yields)
            addsUp(yield.sequences);
    }
    for (const QList<TimeFigures> &list : {figures.functions, figures.slotTimes}) {
        for (const TimeFigures &times : list) {
            must(std::is_sorted(times.times.cbegin(), times.times.cend()), "times are sorted");
            must(times.calls == times.unanswered + times.repeated + times.times.size(),
                 "each call counts once");
        }
    }
    must(courseOf(figures.runs).periods.size() <= 60, "a course has no more than sixty periods");
}

/// The records of comma-separated values, read as RFC 4180 has it; nothing for what is none.
std::optional<QList<QStringList>> recordsOf(const QString &text)
{
    QList<QStringList> records;
    QStringList record;
    for (qsizetype at = 0; at < text.size();) {
        QString field;
        if (text.at(at) == QLatin1Char('"')) {
            for (++at; at < text.size(); ++at) {
                if (text.at(at) != QLatin1Char('"')) {
                    field += text.at(at);
                } else if (at + 1 < text.size() && text.at(at + 1) == QLatin1Char('"')) {
                    field += text.at(at++);
                } else {
                    break;
                }
            }
            if (at++ >= text.size())
                return std::nullopt;
        } else {
            for (; at < text.size() && text.at(at) != QLatin1Char(',') && text.at(at) != QLatin1Char('\r');
                 ++at)
                field += text.at(at);
        }
        record.append(field);
        if (text.mid(at, 2) == QLatin1String("\r\n")) {
            records.append(record);
            record.clear();
            at += 2;
        } else if (text.mid(at, 1) == QLatin1String(",")) {
            ++at;
        } else {
            return std::nullopt;
        }
    }
    return records;
}

/// A field without the apostrophe that keeps a spreadsheet from reading it as a formula.
QString restored(const QString &field)
{
    static const QRegularExpression guarded(QStringLiteral("^'+[=+\\-@\\t\\r\\n]"));
    return guarded.match(field).hasMatch() ? field.mid(1) : field;
}

void givesItsCellsBack(const ReportTable &table)
{
    const QString csv = csvOf(table);
    const auto records = recordsOf(csv);
    must(records.has_value(), "a table is comma-separated values", csv);
    must(records->size() == table.rows.size() + 1, "a record for each row", csv);
    for (qsizetype row = 0; row < table.rows.size(); ++row) {
        const QStringList &record = records->at(row + 1);
        must(record.size() == table.columns.size(), "a field for each column", csv);
        for (qsizetype column = 0; column < record.size(); ++column) {
            const QVariant &cell = table.rows.at(row).at(column);
            if (table.columns.at(column).kind == CellKind::Text &&
                cell.metaType() == QMetaType::fromType<QString>())
                must(restored(record.at(column)) == cell.toString(), "a text comes back", cell.toString());
        }
    }
}

void cannotSteerATerminal(const QString &text)
{
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        must(code == '\n' || (code >= 0x20 && code != 0x7f && (code < 0x80 || code > 0x9f)),
             "what is printed steers no terminal", text);
    }
}

/// No value of the results becomes a tag, and what is opened is closed.
void isAPage(const QString &page)
{
    static const QRegularExpression tag(
        QStringLiteral("<(/?)([A-Za-z][A-Za-z0-9]*)((?:[^<>\"]|\"[^\"]*\")*)>"));
    static const QStringList known{"html",    "head",    "meta",  "title", "style", "body", "main",  "header",
                                   "footer",  "section", "h1",    "h2",    "p",     "div",  "span",  "table",
                                   "caption", "thead",   "tbody", "tr",    "th",    "td",   "svg",   "rect",
                                   "line",    "text",    "g",     "path",  "dl",    "dt",   "dd",    "ul",
                                   "li",      "i",       "b",     "small", "a",     "nav",  "figure"};
    // The mark behind the first line is its only comment.
    const qsizetype comment = page.indexOf(QLatin1String("<!--"));
    must(page.indexOf(QLatin1String("<!--"), comment + 1) < 0, "a page has one comment");
    QStringList open;
    qsizetype tags = 2;
    for (auto matches = tag.globalMatch(page, page.indexOf(QLatin1String("-->"), comment)); matches.hasNext();
         ++tags) {
        const QRegularExpressionMatch match = matches.next();
        const QString name = match.captured(2);
        must(known.contains(name), "a page has tags of its own alone", match.captured(0));
        if (name == QLatin1String("meta") || match.captured(3).endsWith('/'))
            continue;
        if (match.captured(1).isEmpty()) {
            open.append(name);
        } else {
            must(!open.isEmpty() && open.constLast() == name, "tags close what they opened",
                 match.captured(0));
            open.removeLast();
        }
    }
    must(open.isEmpty(), "every tag is closed");
    must(page.count('<') == tags, "nothing else looks like a tag");
}

class ResultsTarget : public fuzz::Target
{
public:
    ResultsTarget()
        : m_path(QDir(fuzz::Surroundings::folder()).filePath(QStringLiteral("it.sqlite")))
    {
        const auto connection = connectionTo(m_path);
        // Small ones, so that a byte of the input reaches far.
        connection->run(QStringLiteral("PRAGMA page_size = 512"));
        station::schema::prepare(*connection, station::schema::Dialect::Sqlite);
    }

    void feed(Input input) override
    {
        if (m_empty.isEmpty())
            m_empty = contentOf(m_path);
        const int form = input.below(4);
        write(m_path, form == 0 ? input.rest() : m_empty);
        if (form > 0)
            fill(m_path, input);
        if (form == 1)
            spoil(input);
        isReadOrRefused();
    }

private:
    /// Changes bytes of the file.
    void spoil(Input &input)
    {
        QByteArray content = contentOf(m_path);
        while (!input.isAtEnd()) {
            const int place = input.byte() * 256 + input.byte();
            content[place % static_cast<int>(content.size())] = static_cast<char>(input.byte());
        }
        write(m_path, content);
    }

    void isReadOrRefused()
    {
        for (const QString &serial : {QString(), QStringLiteral("SN1")}) {
            try {
                isReported(readFigures(m_path, serial));
            } catch (const station::StationError &refusal) {
                must(refusal.text().startsWith(m_path + QStringLiteral(": ")), "a refusal names the file",
                     refusal.text());
            }
        }
        for (const char *suffix : {"-wal", "-shm", "-journal"})
            must(!QFile::exists(m_path + QLatin1String(suffix)), "reading leaves no trace",
                 QLatin1String(suffix));
    }

    static void isReported(const Figures &figures)
    {
        addUp(figures);
        cannotSteerATerminal(textOf(figures));
        for (const ReportTable &table : tablesOf(figures)) {
            givesItsCellsBack(table);
            cannotSteerATerminal(textOf(table));
        }
        isAPage(pageOf(figures, QDateTime::fromSecsSinceEpoch(1'795'000'000)));
    }

    QString m_path;
    QByteArray m_empty;
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<ResultsTarget>();
}
