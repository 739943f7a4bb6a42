#include "tests/results/PostgresServer.h"

#include "station/results/ServerAddress.h"
#include "station/results/SqlConnection.h"
#include "tests/results/Tables.h"
#include "tests/support/Wait.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace testsupport {

namespace {

constexpr uid_t Nobody = 65534;

/// The server does not run for the superuser. It ends with the test, however that ends.
QStringList asServer(const QStringList &command)
{
    QStringList words{QStringLiteral("setpriv"), QStringLiteral("--pdeathsig"), QStringLiteral("KILL")};
    if (::geteuid() == 0)
        words += {QStringLiteral("--reuid"), QString::number(Nobody), QStringLiteral("--regid"),
                  QString::number(Nobody), QStringLiteral("--clear-groups")};
    return words + command;
}

QString program(const char *name)
{
    return QStringLiteral(POSTGRES_BIN) + QLatin1Char('/') + QLatin1String(name);
}

class Session : public station::SqlConnection
{
public:
    explicit Session(const QString &address)
        : SqlConnection(QStringLiteral("QPSQL"))
    {
        database().setConnectOptions(station::ServerAddress(address).connectOptions());
        open();
    }
};

} // namespace

PostgresServer::PostgresServer(const QString &authentication)
{
    const QString passwordFile = m_folder.filePath(QStringLiteral("password"));
    QFile password(passwordFile);
    EXPECT_TRUE(password.open(QIODevice::WriteOnly));
    password.write(Password);
    password.close();
    for (const QString &path : {m_folder.path(), passwordFile}) {
        if (::geteuid() == 0) {
            EXPECT_EQ(::chown(QFile::encodeName(path).constData(), Nobody, Nobody), 0);
        }
    }
    QStringList words =
        asServer({program("initdb"), QStringLiteral("--pgdata"), data(), QStringLiteral("--no-sync"),
                  QStringLiteral("--no-instructions"), QStringLiteral("--auth"), authentication,
                  QStringLiteral("--pwfile"), passwordFile, QStringLiteral("--username"),
                  QStringLiteral("tester"), QStringLiteral("--encoding"), QStringLiteral("UTF8"),
                  QStringLiteral("--locale"), QStringLiteral("C")});
    ChildProcess initdb;
    const QString log = m_folder.filePath(QStringLiteral("initdb.log"));
    EXPECT_TRUE(initdb.start(words, log));
    EXPECT_EQ(initdb.wait(), 0) << "see initdb";
}

PostgresServer::~PostgresServer()
{
    signalAll(SIGCONT);
    stopAtOnce();
}

void PostgresServer::launch()
{
    QStringList words =
        asServer({program("postgres"), QStringLiteral("-D"), data(), QStringLiteral("-k"), m_folder.path(),
                  QStringLiteral("-F"), QStringLiteral("-c"), QStringLiteral("listen_addresses="),
                  QStringLiteral("-c"), QStringLiteral("shared_buffers=16MB")});
    EXPECT_TRUE(m_process.start(words, m_folder.filePath(QStringLiteral("server.log"))));
}

void PostgresServer::start()
{
    launch();
    const bool started = waitUntil(
        [this] {
            // Processes of a server that was killed keep its memory for a moment, and a new one from
            // starting.
            if (!m_process.isRunning())
                launch();
            return answers();
        },
        std::chrono::seconds(60));
    QFile log(m_folder.filePath(QStringLiteral("server.log")));
    if (!started && log.open(QIODevice::ReadOnly))
        ADD_FAILURE() << "the server does not start\n" << log.readAll().toStdString();
}

void PostgresServer::stopAtOnce()
{
    if (!m_process.isRunning())
        return;
    m_process.signal(SIGQUIT);
    m_process.wait();
}

void PostgresServer::kill()
{
    m_process.signal(SIGKILL);
    m_process.wait();
}

void PostgresServer::signalAll(int number) const
{
    const pid_t server = m_process.id();
    if (server == 0)
        return;
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(server));
    EXPECT_TRUE(children.open(QIODevice::ReadOnly));
    for (const QByteArray &child : children.readAll().simplified().split(' ')) {
        if (!child.isEmpty())
            ::kill(child.toInt(), number);
    }
    m_process.signal(number);
}

QString PostgresServer::address() const
{
    return QStringLiteral("postgresql://tester@%1/postgres")
        .arg(QString::fromLatin1(QUrl::toPercentEncoding(m_folder.path())));
}

bool PostgresServer::answers() const
{
    try {
        const Session session(address());
        return true;
    } catch (const station::SqlError &error) {
        // It is there, and wants a password.
        return error.text().contains(QLatin1String("password"));
    }
}

QStringList PostgresServer::rows(const QString &question) const
{
    try {
        Session session(address());
        return rowsOf(session, question);
    } catch (const station::SqlError &error) {
        return {QStringLiteral("-"), error.text()};
    }
}

void PostgresServer::run(const QStringList &statements) const
{
    Session session(address());
    for (const QString &statement : statements)
        static_cast<void>(session.run(statement));
}

} // namespace testsupport
