#pragma once

#include "station/results/RowSink.h"
#include "station/results/RowWriter.h"
#include "station/results/SqliteFile.h"

#include <memory>
#include <optional>

namespace station {

/// Results in a SQLite file, in the tables of Schema: one transaction an event, an answer with all its
/// values.
///
/// One station at a time writes to a file, as to JSON lines; others may read it meanwhile. A file that was
/// removed or replaced is treated as JSON lines treats its own; the new one of a file that was moved has the
/// present run and its sequences as well.
class SqliteResults : public RowSink
{
public:
    /// Errors: throws StationError with "path: why".
    explicit SqliteResults(const QString &path, std::chrono::milliseconds patience = UsualPatience);
    ~SqliteResults() override;

private:
    void keep(const ResultRows &rows) override;
    void findPlace() override;
    [[nodiscard]] QString name() const override { return m_path; }
    void open();
    void finishLog();
    void copyTo(const QString &path, const QStringList &tables, const QString &which);

    QString m_path;
    std::chrono::milliseconds m_patience;
    // The queue's thread alone uses these.
    std::unique_ptr<LockedFile> m_file;
    std::unique_ptr<SqliteConnection> m_connection; ///< Null when it could not be opened anew.
    std::optional<RowWriter> m_writer;              ///< Nothing until its connection is ready.
};

} // namespace station
