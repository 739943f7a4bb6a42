#pragma once

#include "tests/results/ChildProcess.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace testsupport {

/// A PostgreSQL server of the test's own, with its data and its socket in a folder that goes with it. It
/// keeps nothing safe from a machine that crashes, so as to be fast.
///
/// Thread: the main thread.
class PostgresServer
{
public:
    /// Makes the data; start() starts it. `authentication` is how it knows its users: "trust",
    /// "scram-sha-256".
    explicit PostgresServer(const QString &authentication = QStringLiteral("trust"));
    ~PostgresServer();
    PostgresServer(const PostgresServer &) = delete;
    PostgresServer &operator=(const PostgresServer &) = delete;

    /// Returns when it takes connections.
    void start();
    /// Ends it without a word to its clients, as pg_ctl does with "-m immediate".
    void stopAtOnce();
    void kill();
    /// Sends a signal to it and to all its processes.
    void signalAll(int number) const;

    /// Where stations find it.
    [[nodiscard]] QString address() const;
    /// The rows of a question, as Tables has them. A "-" alone when the server does not answer.
    [[nodiscard]] QStringList rows(const QString &question) const;
    void run(const QStringList &statements) const;

    /// Its first user's, where it asks for one.
    static constexpr const char *Password = "se'cr:et\\";

private:
    [[nodiscard]] QString data() const { return m_folder.filePath(QStringLiteral("data")); }
    void launch();
    [[nodiscard]] bool answers() const;

    QTemporaryDir m_folder;
    ChildProcess m_process;
};

} // namespace testsupport
