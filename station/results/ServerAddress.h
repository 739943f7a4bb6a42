#pragma once

#include <QString>

namespace station {

/// Whether a text means a results server and not a file.
[[nodiscard]] bool isServerAddress(const QString &text);

/// Where a results server is: "postgresql://user@host:port/database?option=value", each part of which may be
/// left out. Parts are percent-encoded; hosts may be several, with commas, or a folder with the server's
/// socket
/// ("%2Frun%2Fpostgresql"); the options are libpq's own (sslmode, service, connect_timeout, ...).
///
/// A password never stands there: libpq takes it from PGPASSWORD, PGPASSFILE, ~/.pgpass or a service.
/// Thread: a plain value.
class ServerAddress
{
public:
    /// Errors: throws StationError, whose text holds nothing of the address, since that may be a password.
    explicit ServerAddress(const QString &text);

    /// For people: without user and options.
    [[nodiscard]] QString name() const { return m_name; }
    /// What QSqlDatabase::setConnectOptions() takes and libpq reads.
    [[nodiscard]] QString connectOptions() const;

private:
    void readAuthority(const QString &authority);
    void readQuery(const QString &query);
    void set(const QString &key, const QString &value);

    QString m_name;
    QString m_options; ///< In libpq's words.
};

} // namespace station
