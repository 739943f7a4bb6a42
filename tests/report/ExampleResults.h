#pragma once

#include "station/results/ResultEvents.h"
#include "station/results/SqliteResults.h"
#include "tests/station/StationFiles.h"

#include <gtest/gtest.h>

#include <optional>

namespace testsupport {

/// A results file that is written as a station writes it, at times that the test says.
class ExampleResults
{
public:
    explicit ExampleResults(const QString &path);

    /// A run that begins at this time ("2026-11-21T08:00:00.000Z").
    void run(const QString &name, const QString &time, const QString &badge = {},
             const QString &station = QStringLiteral("Line 3"));
    /// A system's sequence of the run that was begun last. Systems count from 0 through the slots of the
    /// groups G1 and G2, each of which has S1 and S2.
    void system(int system);
    void group(const QString &name);
    void wholeStation();
    /// The sequence that was begun last gets an answer, so many milliseconds after it was asked.
    void answers(const platform::Value &result, qint64 milliseconds,
                 const QString &function = QStringLiteral("showView"));
    void fails(qint64 milliseconds);
    void ends(KVKLuaOutcome outcome);
    void refuses(const QString &kind);
    /// Lets go of the file, as a station does at its end.
    void close() { m_results.reset(); }

private:
    /// Returns when it is in the file.
    template <typename Event>
    void keep(const Event &event)
    {
        m_results->write(event);
        m_results->settle();
    }
    void begin(const station::ResultOwner &owner);
    void write(const platform::Value &result, const std::optional<platform::Error> &error,
               const QString &function, qint64 milliseconds);

    std::optional<station::SqliteResults> m_results;
    QString m_run;
    QString m_badge;
    QDateTime m_time;
    station::ResultOwner m_owner;
    int m_sequences = 0;
    int m_calls = 0;
    int m_refusals = 0;
};

} // namespace testsupport
