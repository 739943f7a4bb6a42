#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace testsupport {

/// A sequence that a page shows, and the operator who answers it, hidden in a comment right after it.
struct PageExample
{
    int line = 0;
    QString lua;
    QString per; ///< "system", "group" or "station"; empty when no operator follows.
    QString operatorLua;
};

/// The text of a file below the project's folder; fails the test when it cannot be read.
[[nodiscard]] QString sourceText(const QString &path);
/// The examples of a page.
[[nodiscard]] std::vector<PageExample> examplesOf(const QString &path);
/// What the pattern's first group matches in a file, in order.
[[nodiscard]] QStringList matchesIn(const QString &path, const QString &pattern);
[[nodiscard]] QStringList sorted(QStringList texts);

} // namespace testsupport
