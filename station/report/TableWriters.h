#pragma once

#include "station/report/ReportTable.h"

namespace station::report {

/// The figures for a terminal: a head of a few lines and the tables, of the runs no more than the latest
/// twenty.
[[nodiscard]] QString textOf(const Figures &figures);
/// One table, whole.
[[nodiscard]] QString textOf(const ReportTable &table);

/// A table as RFC 4180 has it: UTF-8, a line of names first, lines that end with CR LF, every text in quotes.
///
/// A text that a spreadsheet might take for a formula gets an apostrophe in front; numbers with a sign stay
/// as they are. Every text that has an apostrophe in front of such a beginning gets one more, so that taking
/// one away gives the text back.
[[nodiscard]] QString csvOf(const ReportTable &table);

} // namespace station::report
