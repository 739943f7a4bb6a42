#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include <QFile>
#include <QJsonObject>
#include <QString>

#include <mutex>

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

/// Writes results as they come: a JSON object a line, flushed at once, to a file, and a readable line to the
/// standard output where that is wanted.
///
/// Thread: any.
class ResultsFile
{
public:
    /// An empty path writes no file. Errors: throws StationError when the file cannot be written.
    ResultsFile(const QString &path, bool printsAnswers);

    void writeCall(const ResultOwner &owner, const KVKLuaCall &call);
    void writeEnd(const ResultOwner &owner, const KVKLuaEnd &end);
    /// Whether a line could not be written, which was reported on the standard error output.
    [[nodiscard]] bool hasFailed();

private:
    void write(const QJsonObject &line, const QString &readable);

    std::mutex m_mutex;
    QFile m_file;
    bool m_prints;
    bool m_failed = false;
};

/// The outcome in a word, as the results file has it.
[[nodiscard]] QString outcomeText(KVKLuaOutcome outcome);

} // namespace station
