#include "station/report/ReportTable.h"

namespace station::report {

namespace {

ReportColumn text(const char *name, const char *heading)
{
    return {QString::fromLatin1(name), QString::fromLatin1(heading), CellKind::Text};
}

ReportColumn column(const char *name, const char *heading, CellKind kind)
{
    return {QString::fromLatin1(name), QString::fromLatin1(heading), kind};
}

ReportColumn forPrograms(const char *name, CellKind kind = CellKind::Text)
{
    return {QString::fromLatin1(name), QString::fromLatin1(name), kind, true};
}

const QList<ReportColumn> OutcomeColumns{
    column("yield", "Yield", CellKind::Share),   column("sequences", "Sequences", CellKind::Count),
    column("passed", "Passed", CellKind::Count), column("failed", "Failed", CellKind::Count),
    column("erred", "Erred", CellKind::Count),   column("stopped", "Stopped", CellKind::Count),
    column("open", "Open", CellKind::Count)};

const QList<ReportColumn> TimeColumns{column("calls", "Calls", CellKind::Count),
                                      column("unanswered", "Unanswered", CellKind::Count),
                                      column("repeated", "Repeated", CellKind::Count),
                                      column("median_ms", "Median", CellKind::Milliseconds),
                                      column("ninety_percent_ms", "90 %", CellKind::Milliseconds),
                                      column("longest_ms", "Longest", CellKind::Milliseconds)};

/// Nothing rather than an empty text.
QVariant textCell(const QString &value)
{
    return value.isEmpty() ? QVariant() : QVariant(value);
}

template <typename Number>
QVariant numberCell(const std::optional<Number> &number)
{
    return number ? QVariant(*number) : QVariant();
}

QVariantList outcomeCells(const Outcomes &outcomes)
{
    return {numberCell(outcomes.yield()),
            outcomes.total(),
            outcomes.passed,
            outcomes.failed,
            outcomes.erred,
            outcomes.stopped,
            outcomes.open};
}

QVariantList timeCells(const TimeFigures &figures)
{
    return {figures.calls,
            figures.unanswered,
            figures.repeated,
            numberCell(percentile(figures.times, 0.5)),
            numberCell(percentile(figures.times, 0.9)),
            numberCell(percentile(figures.times, 1))};
}

ReportTable runsTable(const Figures &figures)
{
    ReportTable table{QStringLiteral("runs"),
                      QStringLiteral("Runs"),
                      {},
                      {column("started", "Started", CellKind::Time), forPrograms("ended", CellKind::Time),
                       text("station", "Station"), text("operator", "Operator"),
                       column("systems", "Systems", CellKind::Count), text("outcome", "Outcome")},
                      {}};
    table.columns += OutcomeColumns;
    table.columns += {forPrograms("configuration"), forPrograms("run")};
    for (const RunFigures &run : figures.runs) {
        QVariantList row{run.started, textCell(run.ended),
                         run.station, textCell(run.operatorBadge),
                         run.systems, textCell(run.sequences.worst())};
        row += outcomeCells(run.sequences);
        row += {run.configuration, run.run};
        table.rows.append(row);
    }
    return table;
}

ReportTable groupsTable(const Figures &figures)
{
    ReportTable table{QStringLiteral("groups"),
                      QStringLiteral("Yield per group"),
                      QStringLiteral("Passed of all sequences that ended. A dash stands for the sequences of "
                                     "a whole station."),
                      {text("station", "Station"), text("group", "Group")},
                      {}};
    table.columns += OutcomeColumns;
    for (const YieldFigures &group : figures.groupYields) {
        table.rows.append(QVariantList{textCell(group.station), textCell(group.group)} +
                          outcomeCells(group.sequences));
    }
    return table;
}

ReportTable slotsTable(const Figures &figures)
{
    ReportTable table{QStringLiteral("slots"),
                      QStringLiteral("Yield per slot"),
                      QStringLiteral("Passed of all sequences of the slot that ended."),
                      {text("station", "Station"), text("group", "Group"), text("slot", "Slot")},
                      {}};
    table.columns += OutcomeColumns;
    for (const YieldFigures &slot : figures.slotYields) {
        table.rows.append(QVariantList{textCell(slot.station), textCell(slot.group), textCell(slot.slot)} +
                          outcomeCells(slot.sequences));
    }
    return table;
}

ReportTable functionsTable(const Figures &figures)
{
    ReportTable table{
        QStringLiteral("times"),
        QStringLiteral("Operator times per kind of call"),
        QStringLiteral("From the call to its answer, the wait for its turn included; median and "
                       "90 % by nearest rank. Unanswered calls ended with an error, repeated "
                       "ones were answered by a loop; neither has a time."),
        {text("station", "Station"), text("function", "Call")},
        {}};
    table.columns += TimeColumns;
    for (const TimeFigures &function : figures.functions)
        table.rows.append(QVariantList{textCell(function.station), function.function} + timeCells(function));
    return table;
}

ReportTable slotTimesTable(const Figures &figures)
{
    ReportTable table{QStringLiteral("slot-times"),
                      QStringLiteral("Operator times per slot"),
                      QStringLiteral("A dash instead of a slot stands for the calls of a whole group."),
                      {text("station", "Station"), text("group", "Group"), text("slot", "Slot")},
                      {}};
    table.columns += TimeColumns;
    for (const TimeFigures &slot : figures.slotTimes) {
        table.rows.append(QVariantList{textCell(slot.station), textCell(slot.group), textCell(slot.slot)} +
                          timeCells(slot));
    }
    return table;
}

ReportTable refusalsTable(const Figures &figures)
{
    ReportTable table{QStringLiteral("refusals"),
                      QStringLiteral("Refused entries"),
                      {},
                      {text("kind", "Kind"), column("entries", "Entries", CellKind::Count),
                       column("runs", "Runs", CellKind::Count), column("last", "Last", CellKind::Time)},
                      {}};
    for (const RefusalFigures &refusal : figures.refusals)
        table.rows.append({refusal.kind, refusal.entries, refusal.runs, refusal.last});
    return table;
}

ReportTable serialTable(const Figures &figures)
{
    ReportTable table{QStringLiteral("serial"),
                      QStringLiteral("Answers of ") + figures.serial,
                      QStringLiteral("All answers of the runs in which it was entered; those of its own slot "
                                     "are of the unit."),
                      {column("answered", "Answered", CellKind::Time), text("station", "Station"),
                       text("operator", "Operator"), text("group", "Group"), text("slot", "Slot"),
                       text("of", "Of"), text("label", "Label"), text("value", "Value"),
                       text("button", "Button"), text("error", "Error"), text("outcome", "Outcome"),
                       forPrograms("script"), forPrograms("function"), forPrograms("run")},
                      {}};
    for (const SerialAnswer &answer : figures.serialAnswers) {
        table.rows.append(
            {answer.time, textCell(answer.station), textCell(answer.operatorBadge), textCell(answer.group),
             textCell(answer.slot), answer.isOfUnit ? QStringLiteral("unit") : QStringLiteral("run"),
             textCell(answer.label), textCell(answer.value), textCell(answer.button), textCell(answer.error),
             textCell(answer.outcome), answer.script, answer.function, answer.run});
    }
    return table;
}

QString shownTime(const QString &time)
{
    // What is no time is shown as it stands there.
    const bool isTime =
        time.size() == 24 && time.at(10) == QLatin1Char('T') && time.endsWith(QLatin1Char('Z'));
    return isTime ? time.left(10) + QLatin1Char(' ') + time.mid(11, 8) : visibleText(time);
}

QString shownDuration(qint64 milliseconds)
{
    if (milliseconds < 10'000)
        return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 2) + QStringLiteral(" s");
    if (milliseconds < 120'000)
        return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 1) + QStringLiteral(" s");
    return QString::number(static_cast<double>(milliseconds) / 60'000, 'f', 1) + QStringLiteral(" min");
}

} // namespace

QList<ReportTable> tablesOf(const Figures &figures)
{
    QList<ReportTable> tables{runsTable(figures),      groupsTable(figures),    slotsTable(figures),
                              functionsTable(figures), slotTimesTable(figures), refusalsTable(figures)};
    if (!figures.serial.isEmpty())
        tables.append(serialTable(figures));
    return tables;
}

QStringList tableNames()
{
    Figures figures;
    figures.serial = QStringLiteral("-");
    QStringList names;
    for (const ReportTable &table : tablesOf(figures))
        names.append(table.name);
    return names;
}

QString shownCell(CellKind kind, const QVariant &cell)
{
    if (!cell.isValid())
        return QStringLiteral("–");
    switch (kind) {
    case CellKind::Text:
        return visibleText(cell.toString());
    case CellKind::Time:
        return shownTime(cell.toString());
    case CellKind::Count:
        return QString::number(cell.toLongLong());
    case CellKind::Share:
        return QString::number(cell.toDouble() * 100, 'f', 1) + QStringLiteral(" %");
    case CellKind::Milliseconds:
        return shownDuration(cell.toLongLong());
    }
    return {};
}

bool isNumber(CellKind kind)
{
    return kind == CellKind::Count || kind == CellKind::Share || kind == CellKind::Milliseconds;
}

} // namespace station::report
