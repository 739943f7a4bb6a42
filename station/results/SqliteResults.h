#pragma once

#include "station/results/RowSink.h"
#include "station/results/RowWriter.h"
#include "station/results/SqliteFile.h"

#include <optional>

namespace station {

/// Results in a SQLite file, in the tables of Schema: one transaction an event, an answer with all its
/// values.
///
/// One station at a time writes to a file, as to JSON lines; others may read it meanwhile.
class SqliteResults : public RowSink
{
public:
    /// Errors: throws StationError with "path: why".
    explicit SqliteResults(const QString &path, std::chrono::milliseconds patience = UsualPatience);
    ~SqliteResults() override;

private:
    void keep(const ResultRows &rows) override;
    [[nodiscard]] QString name() const override { return m_file.path(); }

    LockedFile m_file;
    // The queue's thread alone uses these.
    std::optional<SqliteConnection> m_connection;
    std::optional<RowWriter> m_writer;
};

} // namespace station
