#pragma once

#include "station/results/Forwarder.h"
#include "station/results/LockedFile.h"
#include "station/results/Outbox.h"
#include "station/results/RowSink.h"

#include <optional>

namespace station {

/// Results for a server that several stations share. Each goes into an outbox of the station's own first,
/// where it is safe, and from there to the server in the background; whether the server can be reached is no
/// matter for a sequence.
///
/// What still waits at the end stays for the next time, and is told on the standard output. So is what the
/// server has refused for what it is, which is tried again from the next start on.
class PostgresResults : public RowSink
{
public:
    /// Errors: throws StationError with "path: why" for an outbox that cannot be written to, or that another
    /// station uses.
    PostgresResults(const ServerAddress &address, const QString &outbox,
                    const Forwarder::Patience &patience = {});
    ~PostgresResults() override;

    /// What people are told of the outbox.
    [[nodiscard]] OutboxState &state() { return m_state; }

private:
    void keep(const ResultRows &rows) override;
    [[nodiscard]] QString name() const override { return m_file.path(); }
    [[nodiscard]] QString stationId() const override { return m_stationId; }

    QString m_server;
    LockedFile m_file;
    OutboxState m_state;
    std::optional<Outbox> m_outbox; ///< The queue's thread alone uses it.
    QString m_stationId;
    std::optional<Forwarder> m_forwarder;
};

} // namespace station
