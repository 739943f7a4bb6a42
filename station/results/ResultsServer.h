#pragma once

#include "station/results/Outbox.h"
#include "station/results/ServerAddress.h"

#include <optional>

namespace station {

/// A session with a results server.
///
/// Thread: the one that made it, but for what is said otherwise. Errors: throws SqlError; the session is of
/// no more use then, unless the error is about a row.
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
    std::optional<RowWriter>
        m_writer; ///< Goes last: a statement would be taken back from a server that has gone.
    SqlConnection m_connection;
};

} // namespace station
