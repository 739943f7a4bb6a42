#pragma once

#include "station/results/AppendedFile.h"
#include "station/results/ResultsSink.h"

#include <QJsonObject>

#include <deque>
#include <memory>
#include <mutex>

namespace station {

/// Results as JSON lines: an object a line, written through at once, behind what the file holds.
///
/// It has a line for each run, each call and each end of a sequence; no other event. A file that was removed
/// is made anew with all that it held, one that was replaced gets what it lacks of that; one that was moved
/// stays as it is, and results go on in a new one.
class JsonLines : public ResultsSink
{
public:
    /// Errors: throws StationError with "path: why" when the file cannot be written, or another station
    /// writes to it.
    explicit JsonLines(const QString &path);
    ~JsonLines() override;

    void write(const RunBegun &run) override;
    void write(const SequenceBegun &) override {}
    void write(const CallDone &call) override;
    void write(const SequenceDone &sequence) override;
    void write(const EntryRefused &) override {}
    void tryAgain() override;
    void settle() override;

private:
    void append(const QJsonObject &line);
    [[nodiscard]] QString writeKept();
    [[nodiscard]] QString findFile();
    [[nodiscard]] QString moveTo(std::unique_ptr<AppendedFile> next);

    std::mutex m_mutex; ///< Guards what follows.
    std::unique_ptr<AppendedFile> m_file;
    std::deque<QByteArray> m_kept; ///< Lines that could not be written yet.
};

} // namespace station
