#pragma once

#include "station/operator/ClickTarget.h"
#include "station/record/PanelWait.h"

#include <QString>

/// What a person did, as lines of an operator's script. Plain functions; thread: any.
namespace station::recorded {

/// A limit of a wait in seconds, as the script writes it: its own `limit`, or more where a person waited for
/// so long that this might be too short.
[[nodiscard]] QString limit(double secondsSinceTheLastLine);
/// The lines that a script begins with.
[[nodiscard]] QString beginning(const QString &station, const QString &date);
/// A line for the reader alone. Line ends within the text become blanks.
[[nodiscard]] QString comment(const QString &text);

[[nodiscard]] QString wait(const PanelWait &panel, const QString &limit);
[[nodiscard]] QString waitForText(const QString &identifier, const QString &text, const QString &limit);
[[nodiscard]] QString waitForRunEnd(const QString &limit);
/// Puts a text into a field and ends the entry.
[[nodiscard]] QString enter(const ClickTarget &field, const QString &text);
/// Ends the entry of what the field holds already.
[[nodiscard]] QString confirm(const ClickTarget &field);
/// Puts a text into a field and leaves the entry begun.
[[nodiscard]] QString fill(const ClickTarget &field, const QString &text);
/// Puts a text into a field in one piece and leaves the entry begun.
[[nodiscard]] QString paste(const ClickTarget &field, const QString &text);
/// Scans a badge that the replaying station is given, counted from 1.
[[nodiscard]] QString logIn(qsizetype number);
[[nodiscard]] QString click(const ClickTarget &target);
[[nodiscard]] QString run();
[[nodiscard]] QString stop();

} // namespace station::recorded
