#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "station/results/AppendedFile.h"

#include <QJsonObject>
#include <QString>

#include <mutex>
#include <optional>

namespace station {

/// Who a result belongs to.
struct ResultOwner
{
    QString sequence;       ///< The script's file name.
    platform::Value system; ///< The system index; nothing for a group's or the station's sequence.
    platform::Value group;  ///< The group's name; nothing for a system's or the station's sequence.

    /// For people: "system 3", "group G1" or "station".
    [[nodiscard]] QString name() const;
};

/// Writes results as they come: a JSON object a line, written through at once, behind what the file holds,
/// and a readable line to the standard output where that is wanted.
///
/// Thread: any.
class ResultsFile
{
public:
    /// An empty path writes no file. Errors: throws StationError when the file cannot be written, or another
    /// station writes to it.
    ResultsFile(const QString &path, bool printsAnswers);

    /// Writes the line of a run that starts: a new identification, which the lines that follow bear too, the
    /// station's name, the absolute path of its configuration, and the time.
    void beginRun(const QString &station, const QString &configuration);

    void writeCall(const ResultOwner &owner, const KVKLuaCall &call);
    void writeEnd(const ResultOwner &owner, const KVKLuaEnd &end);
    /// Whether a line was lost, which was reported on the standard error output.
    [[nodiscard]] bool hasFailed();

private:
    void write(QJsonObject line, const QString &readable);
    void append(const QJsonObject &line);

    std::mutex m_mutex;
    std::optional<AppendedFile> m_file;
    QString m_run; ///< Empty before the first run.
    bool m_prints;
    bool m_failed = false;
};

/// The outcome in a word, as the results file has it.
[[nodiscard]] QString outcomeText(KVKLuaOutcome outcome);

} // namespace station
