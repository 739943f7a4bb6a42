#include "station/report/HtmlPage.h"

#include "station/report/HtmlPlots.h"
#include "station/report/HtmlStyle.h"
#include "station/report/ReportTable.h"

#include <algorithm>
#include <functional>

namespace station::report {

namespace {

constexpr qsizetype LatestRuns = 100;
constexpr qsizetype ShortText = 24;
const QString Long = QStringLiteral("long");

/// The cell of a plot in a row of a table; empty for a table without.
using PlotOfRow = std::function<QString(qsizetype row)>;

QString element(const char *name, const QString &content, const QString &kind = {})
{
    const QString attribute =
        kind.isEmpty() ? QString() : QStringLiteral(" class=\"") + kind + QLatin1Char('"');
    return QLatin1Char('<') + QLatin1String(name) + attribute + QLatin1Char('>') + content +
           QStringLiteral("</") + QLatin1String(name) + QLatin1Char('>');
}

bool isShown(const ReportColumn &column, const Figures &figures)
{
    // One station's name over all tables is enough.
    const bool isOneStation = column.name == QLatin1String("station") && figures.stations().size() < 2;
    return !column.isForPrograms && !isOneStation;
}

QString kindOfCell(const ReportColumn &column, const QVariant &cell)
{
    if (isNumber(column.kind))
        return QStringLiteral("number");
    if (column.name == QLatin1String("outcome") && cell.isValid() &&
        QStringList{QStringLiteral("passed"), QStringLiteral("failed"), QStringLiteral("erred"),
                    QStringLiteral("stopped"), QStringLiteral("open")}
            .contains(cell.toString()))
        return QStringLiteral("outcome ") + cell.toString();
    // What is short stays in one line; a long entry without blanks must not make the table wide.
    return cell.toString().size() > ShortText ? Long : QString();
}

bool isOfUnit(const ReportTable &table, const QVariantList &row)
{
    return table.name == QLatin1String("serial") && row.contains(QVariant(QStringLiteral("unit")));
}

/// A table as people have it, its plot behind the columns of text.
class TableText
{
public:
    TableText(const Figures &figures, const ReportTable &table, PlotOfRow plot)
        : m_table(table)
        , m_plot(std::move(plot))
    {
        for (qsizetype i = 0; i < table.columns.size(); ++i) {
            if (isShown(table.columns.at(i), figures))
                m_shown.append(i);
        }
        m_plotBefore = static_cast<qsizetype>(
            std::find_if(m_shown.begin(), m_shown.end(),
                         [&table](qsizetype i) { return isNumber(table.columns.at(i).kind); }) -
            m_shown.begin());
    }

    [[nodiscard]] QString text() const
    {
        QString rows = element("thead", element("tr", head())) + QStringLiteral("\n<tbody>\n");
        for (qsizetype row = 0; row < m_table.rows.size(); ++row) {
            const QString kind = isOfUnit(m_table, m_table.rows.at(row)) ? QStringLiteral("unit") : QString();
            rows += element("tr", cells(row), kind) + QLatin1Char('\n');
        }
        return element("div", element("table", rows + QStringLiteral("</tbody>")), QStringLiteral("wide")) +
               QLatin1Char('\n');
    }

private:
    [[nodiscard]] QString head() const
    {
        QString text;
        for (qsizetype place = 0; place < m_shown.size(); ++place) {
            if (m_plot && place == m_plotBefore)
                text += element("th", {});
            const ReportColumn &column = m_table.columns.at(m_shown.at(place));
            text += element("th", escaped(column.heading),
                            isNumber(column.kind) ? QStringLiteral("number") : QString());
        }
        return text;
    }
    [[nodiscard]] QString cells(qsizetype row) const
    {
        QString text;
        for (qsizetype place = 0; place < m_shown.size(); ++place) {
            if (m_plot && place == m_plotBefore)
                text += element("td", m_plot(row), QStringLiteral("plot"));
            const ReportColumn &column = m_table.columns.at(m_shown.at(place));
            const QVariant &cell = m_table.rows.at(row).at(m_shown.at(place));
            const QString kind = kindOfCell(column, cell);
            const QString content = escaped(shownCell(column.kind, cell));
            text += element("td", kind == Long ? element("div", content) : content, kind);
        }
        return text;
    }

    const ReportTable &m_table;
    PlotOfRow m_plot;
    QList<qsizetype> m_shown;
    qsizetype m_plotBefore = 0;
};

QString section(const QString &name, const QString &title, const QString &content, const QString &note = {})
{
    return QStringLiteral("<section id=\"") + name + QStringLiteral("\">\n") + element("h2", escaped(title)) +
           QLatin1Char('\n') + content +
           (note.isEmpty() ? QString()
                           : element("p", escaped(note), QStringLiteral("note")) + QLatin1Char('\n')) +
           QStringLiteral("</section>\n");
}

QString nothing(const char *why)
{
    return element("p", QString::fromLatin1(why), QStringLiteral("note")) + QLatin1Char('\n');
}

QString tile(const char *name, const QString &value)
{
    return element("div", element("dt", QString::fromLatin1(name)) + element("dd", escaped(value)));
}

QString tiles(const Figures &figures)
{
    const Outcomes sequences = figures.sequences();
    const std::optional<double> yield = sequences.yield();
    QList<qint64> times;
    for (const TimeFigures &function : figures.functions)
        times += function.times;
    std::sort(times.begin(), times.end());
    const std::optional<qint64> median = percentile(times, 0.5);
    qint64 refused = 0;
    for (const RefusalFigures &refusal : figures.refusals)
        refused += refusal.entries;
    return element("dl",
                   tile("Runs", QString::number(figures.runs.size())) +
                       tile("Sequences", QString::number(sequences.total())) +
                       tile("Yield", shownCell(CellKind::Share, yield ? QVariant(*yield) : QVariant())) +
                       tile("Answers", QString::number(figures.answers)) +
                       tile("Median time",
                            shownCell(CellKind::Milliseconds, median ? QVariant(*median) : QVariant())) +
                       tile("Refused entries", QString::number(refused)),
                   QStringLiteral("tiles")) +
           QLatin1Char('\n');
}

QString headOf(const Figures &figures)
{
    QString name = figures.stations().join(QStringLiteral(", "));
    if (name.isEmpty())
        name = QStringLiteral("Report");
    QString span = QStringLiteral("There are no runs.");
    if (!figures.runs.isEmpty())
        span = QStringLiteral("Runs from ") + shownCell(CellKind::Time, figures.runs.last().started) +
               QStringLiteral(" to ") + shownCell(CellKind::Time, figures.runs.first().started) +
               QStringLiteral(" (UTC)");
    return element("header", element("h1", escaped(name)) +
                                 element("p", escaped(span), QStringLiteral("under")) + tiles(figures)) +
           QLatin1Char('\n');
}

QString yieldSection(const Figures &figures, const ReportTable &table, const QList<YieldFigures> &yields)
{
    if (yields.isEmpty())
        return section(table.name, table.title, nothing("There are no sequences."));
    const auto plot = [&yields](qsizetype row) { return outcomeBar(yields.at(row).sequences); };
    return section(table.name, table.title, outcomeLegend() + TableText(figures, table, plot).text(),
                   table.note);
}

QString histogramSection(const Figures &figures)
{
    const QList<TimeClass> classes = histogram(figures.functions);
    ReportTable table{{},
                      {},
                      {},
                      {{QStringLiteral("time"), QStringLiteral("Time"), CellKind::Text},
                       {QStringLiteral("calls"), QStringLiteral("Calls"), CellKind::Count}},
                      {}};
    qint64 largest = 0;
    for (const TimeClass &each : classes) {
        table.rows.append({each.name, each.count});
        largest = std::max(largest, each.count);
    }
    const auto plot = [&classes, largest](qsizetype row) { return countBar(classes.at(row).count, largest); };
    const QString title = QStringLiteral("Operator times");
    if (largest == 0)
        return section(QStringLiteral("histogram"), title, nothing("No call has been answered."));
    return section(QStringLiteral("histogram"), title, TableText(figures, table, plot).text());
}

QString refusalSection(const Figures &figures, const ReportTable &table)
{
    if (table.rows.isEmpty())
        return section(table.name, table.title, nothing("No entry was refused."));
    // The first one is the most frequent.
    const qint64 largest = figures.refusals.first().entries;
    const auto plot = [&figures, largest](qsizetype row) {
        return countBar(figures.refusals.at(row).entries, largest);
    };
    return section(table.name, table.title, TableText(figures, table, plot).text());
}

QString runsSection(const Figures &figures, ReportTable table)
{
    if (table.rows.isEmpty())
        return section(table.name, table.title, nothing("There are no runs."));
    QString note;
    if (table.rows.size() > LatestRuns) {
        note = QStringLiteral("The latest %1 of %2.").arg(LatestRuns).arg(table.rows.size());
        table.rows.resize(LatestRuns);
    }
    return section(table.name, table.title, TableText(figures, table, {}).text(), note);
}

QString plainSection(const Figures &figures, const ReportTable &table, const char *otherwise)
{
    if (table.rows.isEmpty())
        return section(table.name, table.title, nothing(otherwise));
    return section(table.name, table.title, TableText(figures, table, {}).text(), table.note);
}

QString courseSection(const Figures &figures)
{
    const QString plot = coursePlot(courseOf(figures.runs));
    return section(QStringLiteral("course"), QStringLiteral("Runs over time"),
                   plot.isEmpty() ? nothing("There are no runs.") : plot);
}

QString sectionOf(const Figures &figures, const ReportTable &table)
{
    if (table.name == QLatin1String("groups"))
        return yieldSection(figures, table, figures.groupYields);
    if (table.name == QLatin1String("slots"))
        return yieldSection(figures, table, figures.slotYields);
    if (table.name == QLatin1String("refusals"))
        return refusalSection(figures, table);
    if (table.name == QLatin1String("runs"))
        return runsSection(figures, table);
    if (table.name == QLatin1String("serial"))
        return plainSection(figures, table, "It was not entered in any run.");
    return plainSection(figures, table, "No call has waited for an operator.");
}

/// What was asked for by a serial number stands first, the long list of runs last.
QString sections(const Figures &figures)
{
    const QList<ReportTable> tables = tablesOf(figures);
    const auto named = [&](const char *name) {
        const auto found = std::find_if(tables.begin(), tables.end(), [name](const ReportTable &table) {
            return table.name == QLatin1String(name);
        });
        return found == tables.end() ? QString() : sectionOf(figures, *found);
    };
    return named("serial") + courseSection(figures) + named("groups") + named("slots") +
           histogramSection(figures) + named("times") + named("slot-times") + named("refusals") +
           named("runs");
}

} // namespace

QByteArray pageMark()
{
    return QByteArrayLiteral(
        "<!DOCTYPE html>\n<!-- Made by station report, which replaces this file by its next report. -->\n");
}

QString pageOf(const Figures &figures, const QDateTime &now)
{
    return QString::fromLatin1(pageMark()) +
           QStringLiteral("<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                          "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                          "style-src 'unsafe-inline'\">\n"
                          "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                          "<meta name=\"color-scheme\" content=\"light dark\">\n<title>") +
           escaped(figures.stations().join(QStringLiteral(", ")) + QStringLiteral(" report")) +
           QStringLiteral("</title>\n<style>") + styleSheet() +
           QStringLiteral("</style>\n</head>\n<body>\n") + headOf(figures) + QStringLiteral("<main>\n") +
           sections(figures) + QStringLiteral("</main>\n") +
           element("footer", escaped(QStringLiteral("Made of ") + figures.file + QStringLiteral(" on ") +
                                     now.toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) +
                                     QStringLiteral(" (UTC). Times are universal."))) +
           QStringLiteral("\n</body>\n</html>\n");
}

} // namespace station::report
