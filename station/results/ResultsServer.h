#pragma once

#include "station/results/Outbox.h"
#include "station/results/ServerAddress.h"

namespace station {

/// A session with a results server.
///
/// Thread: the one that made it, but for what is said otherwise. Errors: throws SqlError; the session is of
/// no more use then.
class ResultsServer
{
public:
    /// Connects, and makes or migrates the tables where that is to be done.
    explicit ResultsServer(const ServerAddress &address);

    /// Stores letters, all or none. One that is there already stays as it is.
    void store(const QList<Outbox::Letter> &letters);
    /// The session's socket: shutting it down ends whatever the session waits for.
    [[nodiscard]] int socket() const;

private:
    SqlConnection m_connection;
    RowWriter m_writer;
};

} // namespace station
