#include "station/report/TableWriters.h"

#include <QRegularExpression>

#include <algorithm>

namespace station::report {

namespace {

constexpr qsizetype LatestRuns = 20;
constexpr qsizetype WidestCell = 48;

QString shortened(const QString &text)
{
    return text.size() <= WidestCell ? text : text.left(WidestCell - 1) + QStringLiteral("…");
}

/// The cells of the columns that people are shown, the headings first.
QList<QStringList> shownRows(const ReportTable &table)
{
    QList<QStringList> rows(table.rows.size() + 1);
    for (qsizetype column = 0; column < table.columns.size(); ++column) {
        const ReportColumn &kind = table.columns.at(column);
        if (kind.isForPrograms)
            continue;
        rows.first().append(kind.heading);
        for (qsizetype row = 0; row < table.rows.size(); ++row)
            rows[row + 1].append(shortened(shownCell(kind.kind, table.rows.at(row).at(column))));
    }
    return rows;
}

QList<bool> numberColumns(const ReportTable &table)
{
    QList<bool> numbers;
    for (const ReportColumn &column : table.columns) {
        if (!column.isForPrograms)
            numbers.append(isNumber(column.kind));
    }
    return numbers;
}

QString rowText(const QStringList &cells, const QList<qsizetype> &widths, const QList<bool> &isNumber)
{
    QStringList padded;
    for (qsizetype i = 0; i < cells.size(); ++i)
        padded.append(isNumber.at(i) ? cells.at(i).rightJustified(widths.at(i))
                                     : cells.at(i).leftJustified(widths.at(i)));
    QString line = padded.join(QStringLiteral("  "));
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line + QLatin1Char('\n');
}

QString headOf(const Figures &figures)
{
    QString head = QStringLiteral("Report of ") + visibleText(figures.file) + QLatin1Char('\n');
    if (figures.runs.isEmpty())
        return head + QStringLiteral("There are no runs.\n");
    const Outcomes sequences = figures.sequences();
    const std::optional<double> yield = sequences.yield();
    head += QStringLiteral("%1 runs, %2 sequences, %3 answers; yield %4. Times are universal (UTC).\n")
                .arg(figures.runs.size())
                .arg(sequences.total())
                .arg(figures.answers)
                .arg(shownCell(CellKind::Share, yield ? QVariant(*yield) : QVariant()));
    return head;
}

/// What a spreadsheet may take for the beginning of a formula, behind blanks and apostrophes, also in the
/// wide form that some keyboards give.
bool looksLikeFormula(const QString &text)
{
    static const QRegularExpression formula(QStringLiteral("^'*(\\s*[=+\\-@＝＋－＠]|[\\t\\r\\n])"),
                                            QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression number(QStringLiteral("^[+-]?[0-9]+([.,][0-9]+)?([eE][+-]?[0-9]+)?\\z"));
    return formula.match(text).hasMatch() && !number.match(text).hasMatch();
}

QString csvText(QString text)
{
    if (looksLikeFormula(text))
        text.prepend(QLatin1Char('\''));
    return QLatin1Char('"') + text.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

QString csvCell(CellKind kind, const QVariant &cell)
{
    if (!cell.isValid())
        return {};
    if (kind == CellKind::Share)
        return QString::number(cell.toDouble(), 'f', 4);
    return isNumber(kind) ? QString::number(cell.toLongLong()) : csvText(cell.toString());
}

} // namespace

QString textOf(const ReportTable &table)
{
    const QList<QStringList> rows = shownRows(table);
    QList<qsizetype> widths(rows.first().size(), 0);
    for (const QStringList &row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths.at(i), row.at(i).size());
    }
    const QList<bool> numbers = numberColumns(table);
    QString text;
    for (const QStringList &row : rows)
        text += rowText(row, widths, numbers);
    return text;
}

QString textOf(const Figures &figures)
{
    QString text = headOf(figures);
    for (ReportTable &table : tablesOf(figures)) {
        if (table.rows.isEmpty() && table.name != QLatin1String("serial"))
            continue;
        text += QLatin1Char('\n') + visibleText(table.title);
        if (table.name == QLatin1String("runs") && table.rows.size() > LatestRuns) {
            text += QStringLiteral(" (the latest %1; all of them: --table runs)").arg(LatestRuns);
            table.rows.resize(LatestRuns);
        }
        text += QLatin1Char('\n');
        text += table.rows.isEmpty() ? QStringLiteral("It was not entered in any run.\n") : textOf(table);
        if (!table.note.isEmpty())
            text += table.note + QLatin1Char('\n');
    }
    return text;
}

QString csvOf(const ReportTable &table)
{
    QStringList names;
    for (const ReportColumn &column : table.columns)
        names.append(column.name);
    QString text = names.join(QLatin1Char(',')) + QStringLiteral("\r\n");
    for (const QVariantList &row : table.rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (i > 0)
                text += QLatin1Char(',');
            text += csvCell(table.columns.at(i).kind, row.at(i));
        }
        text += QStringLiteral("\r\n");
    }
    return text;
}

} // namespace station::report
