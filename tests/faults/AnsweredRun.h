#pragma once

#include "tests/end_to_end/StationRun.h"

namespace testsupport {

/// A station that is answered thirty times, with "0001" to "0030", and rests after each ten answers until it
/// is told to go on. What the operator saw accepted is asked for from outside, and held against the results.
///
/// The log goes nowhere: limits on files are for the results.
class AnsweredRun : public StationRun
{
public:
    static constexpr int Rest = 10;
    static constexpr int All = 30;

    /// The results are a file of this name in the run's folder, JSON lines or a database.
    explicit AnsweredRun(const QString &results = QStringLiteral("results.jsonl"));

    [[nodiscard]] QString resultsPath() const { return path(m_results); }
    [[nodiscard]] bool isDatabase() const { return m_results.endsWith(QLatin1String(".sqlite")); }
    /// Waits until so many answers were accepted; false, and a failed test, when they are not.
    bool waitForAnswers(int count) const;
    /// Lets the operator go on behind a rest.
    void goOn(int count) const;
    /// Waits until the station has said this on its error stream; false, and a failed test, when it does not.
    bool waitForError(const QString &text);
    /// What the station has said so far, waitForError() included.
    [[nodiscard]] QString said();

    /// The answers in a file, in its order.
    [[nodiscard]] static QStringList answersIn(const QString &file);
    /// "0001" to the number.
    [[nodiscard]] static QStringList answersUpTo(int count);

private:
    QString m_results;
    QString m_said;
};

} // namespace testsupport
