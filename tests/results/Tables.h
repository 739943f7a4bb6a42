#pragma once

#include "station/results/SqlConnection.h"

#include <QString>
#include <QStringList>

namespace testsupport {

/// The rows of a question to a database, each as text: values with "|" in between, null as "-".
[[nodiscard]] QStringList rowsOf(station::SqlConnection &connection, const QString &question);
/// The same of a SQLite file, through a connection of its own, as any reader has it.
[[nodiscard]] QStringList rowsOfFile(const QString &path, const QString &question);
/// Runs statements on a SQLite file.
void runOnFile(const QString &path, const QStringList &statements);

} // namespace testsupport
