#pragma once

#include "station/results/ResultEvents.h"

#include <QJsonObject>
#include <QList>

namespace station {

/// A row for a table of results: what is written is named by its kind (see RowWriter); a value that is not
/// there is null.
struct ResultRow
{
    QString kind;
    QJsonObject values;

    friend bool operator==(const ResultRow &, const ResultRow &) = default;
};

/// What is written whole or not at all.
using ResultRows = QList<ResultRow>;

/// Text as every database takes it: what no text of theirs can hold (NUL, half of a surrogate pair) is
/// written as in JSON, "\u0000".
[[nodiscard]] QString storableText(const QString &text);
/// A value as JSON in one line.
[[nodiscard]] QString jsonText(const platform::Value &value);

/// The rows as JSON in one line, by name, so that a station of a later version reads what an earlier one has
/// left.
[[nodiscard]] QString textOf(const ResultRows &rows);

/// The rows of an event. `stationId` is empty where results of one station are kept by themselves.
[[nodiscard]] ResultRows rowsOf(const RunBegun &run, const QString &stationId);
[[nodiscard]] ResultRows rowsOf(const SequenceBegun &sequence);
/// The call, and an answer's values one by one.
[[nodiscard]] ResultRows rowsOf(const CallDone &call);
[[nodiscard]] ResultRows rowsOf(const SequenceDone &sequence);
[[nodiscard]] ResultRows rowsOf(const EntryRefused &refusal);

} // namespace station
