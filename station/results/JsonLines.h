#pragma once

#include "station/results/AppendedFile.h"
#include "station/results/ResultsSink.h"

#include <QJsonObject>

#include <mutex>

namespace station {

/// Results as JSON lines: an object a line, written through at once, behind what the file holds.
///
/// It has a line for each run, each call and each end of a sequence; no other event.
class JsonLines : public ResultsSink
{
public:
    /// Errors: throws StationError with "path: why" when the file cannot be written, or another station
    /// writes to it.
    explicit JsonLines(const QString &path);

    void write(const RunBegun &run) override;
    void write(const SequenceBegun &) override {}
    void write(const CallDone &call) override;
    void write(const SequenceDone &sequence) override;
    void write(const EntryRefused &) override {}

private:
    void append(const QJsonObject &line);

    std::mutex m_mutex;
    AppendedFile m_file;
};

} // namespace station
