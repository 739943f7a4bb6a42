#pragma once

#include "station/base/VisibleText.h"
#include "station/report/Figures.h"

#include <QVariant>

namespace station::report {

/// What stands in a column, which says how it is shown.
enum class CellKind { Text, Time, Count, Share, Milliseconds };

struct ReportColumn
{
    QString name;    ///< For programs: "median_ms".
    QString heading; ///< For people: "Median".
    CellKind kind = CellKind::Text;
    bool isForPrograms = false; ///< Of no use to people, who are not shown it.
};

/// Figures as a table. A cell is a text, a whole number, a share from 0 to 1, or nothing.
struct ReportTable
{
    QString name;
    QString title;
    QString note; ///< What has to be known to read it; empty at times.
    QList<ReportColumn> columns;
    QList<QVariantList> rows;
};

/// All tables, in the order of a report; the one of a serial number only where it was asked for.
[[nodiscard]] QList<ReportTable> tablesOf(const Figures &figures);
/// Their names; the last is the one of a serial number.
[[nodiscard]] QStringList tableNames();

/// A cell for people: "92.3 %", "1.5 s", "2026-11-21 08:00:00", and a dash for nothing. Texts as
/// visibleText() has them.
[[nodiscard]] QString shownCell(CellKind kind, const QVariant &cell);
[[nodiscard]] bool isNumber(CellKind kind);

} // namespace station::report
