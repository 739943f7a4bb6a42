#include "station/report/ReportCommand.h"

#include "station/base/StationError.h"
#include "station/report/FiguresReader.h"
#include "station/report/HtmlPage.h"
#include "station/report/ReportFiles.h"
#include "station/report/TableWriters.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace station {
namespace {

using report::Figures;
using report::ReportFile;
using report::ReportTable;

const QCommandLineOption Html(QStringLiteral("html"),
                              QStringLiteral("Writes index.html into the folder: the report as a page with "
                                             "plots."),
                              QStringLiteral("DIR"));
const QCommandLineOption
    Csv(QStringLiteral("csv"),
        QStringLiteral("Comma-separated values: all tables, an empty line between them."));
const QCommandLineOption Table(QStringLiteral("table"),
                               QStringLiteral("One table, whole: %1.").arg(report::tableNames().join(", ")),
                               QStringLiteral("NAME"));
const QCommandLineOption Serial(QStringLiteral("serial"),
                                QStringLiteral("All answers of the runs in which the text was entered."),
                                QStringLiteral("TEXT"));
const QCommandLineOption Output(QStringList{QStringLiteral("o"), QStringLiteral("output")},
                                QStringLiteral("Writes there instead of printing; with --csv and all tables "
                                               "a folder, that gets a file for each."),
                                QStringLiteral("PATH"));

constexpr char Notes[] =
    "\nAn earlier report is replaced, any other file that is there is refused. The station may run "
    "meanwhile.\n"
    "Exit status: 0 the report was made, 1 the text of --serial was not entered in any run, 2 there is no "
    "report.\n";

struct Request
{
    QString file;
    QString html;
    bool csv = false;
    QString table; ///< Empty for all.
    QString serial;
    QString output;
};

[[noreturn]] void misused(const QString &why)
{
    throw StationError(QStringLiteral("report: %1; see station report --help").arg(why));
}

/// An option's value, which must not be empty where the option is given.
QString valueOf(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    const QString value = parser.value(option);
    if (parser.isSet(option) && value.isEmpty())
        misused(QStringLiteral("--%1 is empty").arg(option.names().constLast()));
    return value;
}

void check(const Request &request)
{
    if (!request.html.isEmpty() && (request.csv || !request.table.isEmpty() || !request.output.isEmpty()))
        misused(QStringLiteral("--html goes with --serial alone"));
    if (!request.table.isEmpty() && !report::tableNames().contains(request.table))
        misused(QStringLiteral("there is no table '%1'").arg(request.table));
    if (request.table == QLatin1String("serial") && request.serial.isEmpty())
        misused(QStringLiteral("the table 'serial' needs --serial TEXT"));
}

/// What is wanted; nothing when the help was asked for, which is printed.
std::optional<Request> requestOf(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Says what the results in a SQLite file say: runs, yield, operator times, refusals."));
    parser.addOptions({Html, Csv, Table, Serial, Output});
    // Not the parser's own, which speaks of Qt as well.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Says how it is used."));
    parser.addOption(help);
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The results."),
                                 QStringLiteral("FILE.sqlite"));
    if (!parser.parse(arguments))
        misused(parser.errorText());
    if (parser.isSet(help)) {
        const QString text = parser.helpText();
        QTextStream(stdout) << "Usage: station report [options] FILE.sqlite" << text.mid(text.indexOf('\n'))
                            << Notes;
        return std::nullopt;
    }
    if (parser.positionalArguments().size() != 1 || parser.positionalArguments().constFirst().isEmpty())
        misused(QStringLiteral("needs one file of results"));
    Request request{parser.positionalArguments().constFirst(),
                    valueOf(parser, Html),
                    parser.isSet(Csv),
                    valueOf(parser, Table),
                    valueOf(parser, Serial),
                    valueOf(parser, Output)};
    // Who asks for a serial number wants its answers, and no report around them.
    if (!request.serial.isEmpty() && request.html.isEmpty() && request.table.isEmpty())
        request.table = QStringLiteral("serial");
    check(request);
    return request;
}

ReportTable tableOf(const Figures &figures, const QString &name)
{
    const QList<ReportTable> tables = report::tablesOf(figures);
    return *std::find_if(tables.begin(), tables.end(),
                         [&name](const ReportTable &table) { return table.name == name; });
}

QString textOf(const Request &request, const Figures &figures)
{
    if (request.csv && request.table.isEmpty()) {
        QStringList all;
        for (const ReportTable &table : report::tablesOf(figures))
            all.append(report::csvOf(table));
        return all.join(QStringLiteral("\r\n"));
    }
    if (request.table.isEmpty())
        return report::textOf(figures);
    const ReportTable table = tableOf(figures, request.table);
    return request.csv ? report::csvOf(table) : report::textOf(table);
}

void print(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    const bool done = std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout) ==
                          static_cast<std::size_t>(bytes.size()) &&
                      std::fflush(stdout) == 0;
    // A reader that goes away, such as a pager, has seen enough.
    if (!done && errno != EPIPE)
        throw StationError(QStringLiteral("it cannot be printed: %1").arg(qt_error_string(errno)));
}

ReportFile csvFile(const ReportTable &table, const QString &path)
{
    const QByteArray content = report::csvOf(table).toUtf8();
    return {path, content, content.left(content.indexOf('\n') + 1)};
}

void writeTables(const Request &request, const Figures &figures)
{
    QList<ReportFile> files;
    for (const ReportTable &table : report::tablesOf(figures))
        files.append(csvFile(table, QDir(request.output).filePath(table.name + QStringLiteral(".csv"))));
    report::writeFiles(request.output, files);
}

void writeText(const Request &request, const Figures &figures)
{
    const QString folder = QFileInfo(request.output).path();
    if (request.csv)
        return report::writeFiles(folder, {csvFile(tableOf(figures, request.table), request.output)});
    const QByteArray mark = QByteArrayLiteral("Report of ");
    const QByteArray head =
        request.table.isEmpty() ? QByteArray() : mark + figures.file.toUtf8() + QByteArrayLiteral("\n\n");
    report::writeFiles(folder, {{request.output, head + textOf(request, figures).toUtf8(), mark}});
}

void writePage(const Request &request, const Figures &figures)
{
    const QString page = report::pageOf(figures, QDateTime::currentDateTimeUtc());
    report::writeFiles(request.html, {{QDir(request.html).filePath(QStringLiteral("index.html")),
                                       page.toUtf8(), report::pageMark()}});
}

void deliver(const Request &request, const Figures &figures)
{
    if (!request.html.isEmpty())
        writePage(request, figures);
    else if (request.output.isEmpty())
        print(textOf(request, figures));
    else if (request.csv && request.table.isEmpty())
        writeTables(request, figures);
    else
        writeText(request, figures);
}

} // namespace

int runReport(const QStringList &arguments)
{
    const std::optional<Request> request = requestOf(arguments);
    if (!request)
        return EXIT_SUCCESS;
    try {
        const Figures figures = report::readFigures(request->file, request->serial);
        deliver(*request, figures);
        return !request->serial.isEmpty() && figures.serialAnswers.isEmpty() ? EXIT_FAILURE : EXIT_SUCCESS;
    } catch (const StationError &error) {
        throw StationError(QStringLiteral("report: ") + error.text());
    }
}

} // namespace station
