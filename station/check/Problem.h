#pragma once

#include <QList>
#include <QString>

#include <tuple>

namespace station {

/// Something in a file that its author has to mend.
struct Problem
{
    QString file; ///< As a person would name it.
    int line = 1;
    int column = 0; ///< 0 where it is not known.
    QString text;

    /// "file:line:column: text", in one line whatever stands in the file.
    [[nodiscard]] QString asLine() const;

    friend bool operator<(const Problem &a, const Problem &b)
    {
        return std::tie(a.file, a.line, a.column, a.text) < std::tie(b.file, b.line, b.column, b.text);
    }
    friend bool operator==(const Problem &, const Problem &) = default;
};

/// In the order of files and lines, each once.
[[nodiscard]] QList<Problem> sortedProblems(QList<Problem> problems);
/// What a reader of a configuration refuses: "file:line: text".
[[nodiscard]] Problem problemOfConfiguration(const QString &file, const QString &refusal);

} // namespace station
