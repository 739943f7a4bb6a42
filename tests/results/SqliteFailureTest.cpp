#include "station/results/Schema.h"
#include "station/results/SqliteResults.h"
#include "tests/results/FileSizeLimit.h"
#include "tests/results/Tables.h"
#include "tests/station/StationFiles.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/LogTrap.h"

#include <QFile>

#include <cstdio>
#include <optional>
#include <unistd.h>

using platform::Dictionary;
using station::ResultOwner;
using station::SqliteResults;

namespace {

const ResultOwner ofSystem{"ask.lua", 3, {}, 0, "G1", {"S4"}};

class SqliteFailureTest : public ::testing::Test
{
protected:
    SqliteFailureTest() { m_results.emplace(path(), std::chrono::milliseconds(0)); }
    ~SqliteFailureTest() override = default;
    QString path() const { return m_files.path("results.sqlite"); }
    void beginRun() { m_results->write(station::RunBegun{"r", "Line 3", "/s", {}, m_time}); }
    void answer(int number, const QString &text = "A1")
    {
        m_results->write(station::CallDone{
            "r", ofSystem, {"showView", {}, Dictionary{{"SN", text}}, {}}, number, {}, m_time, m_time, 0});
    }
    /// What is said on the error stream about the file: while it cannot be written, and at the end.
    std::string trouble(const char *why) const
    {
        return "station: results cannot be written: " + path().toStdString() + ": " + why + "\n";
    }
    std::string loss(const char *why) const
    {
        return "station: results are lost: " + path().toStdString() + ": " + why + "\n";
    }
    QStringList rows(const QString &question) const { return testsupport::rowsOfFile(path(), question); }

    testsupport::StationFiles m_files;
    QDateTime m_time = QDateTime::currentDateTimeUtc();
    std::optional<SqliteResults> m_results;
};

class Locker : public station::SqlConnection
{
public:
    explicit Locker(const QString &file)
        : SqlConnection("QSQLITE")
    {
        database().setDatabaseName(file);
        open();
        static_cast<void>(run("BEGIN IMMEDIATE"));
    }
};

TEST_F(SqliteFailureTest, ALockedFileHoldsUpWhatComesMeanwhileAndLosesNothing)
{
    testsupport::expectErrors();
    testsupport::LogRecorder log;
    testing::internal::CaptureStderr();
    {
        const Locker locker(path());
        beginRun();
        answer(1);
        answer(2);
        m_results->tryAgain();
        EXPECT_EQ(m_results->unwritten().count, 3);
    }
    EXPECT_TRUE(log.anyContains("not yet in " + path() + ": [{\"kind\":\"call\""));
    answer(3);
    m_results->settle();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), trouble("database is locked")) << "said once";
    EXPECT_EQ(m_results->unwritten().count, 0);
    EXPECT_FALSE(m_results->hasFailed());
    EXPECT_EQ(rows("SELECT call FROM calls ORDER BY rowid"), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(rows("SELECT run FROM runs"), QStringList{"r"});
}

TEST_F(SqliteFailureTest, AFileThatStaysLockedUntilTheEndIsToldAsLost)
{
    testsupport::expectErrors();
    testing::internal::CaptureStderr();
    const Locker locker(path());
    answer(1);
    m_results->settle();
    m_results->settle();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              trouble("database is locked") + loss("database is locked"));
    EXPECT_TRUE(m_results->hasFailed());
}

TEST_F(SqliteFailureTest, AFullDiskHoldsUpAnswersAndKeepsThemWhole)
{
    testsupport::expectErrors();
    beginRun();
    answer(1);
    testing::internal::CaptureStderr();
    {
        const testsupport::FileSizeLimit limit(200'000);
        answer(2, QString(1'000'000, 'x'));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), trouble("disk I/O error"));
    answer(3);
    m_results->settle();
    EXPECT_FALSE(m_results->hasFailed());
    EXPECT_EQ(rows("SELECT call FROM answers"), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(rows("PRAGMA integrity_check"), QStringList{"ok"});
}

TEST_F(SqliteFailureTest, AFileThatIsOverwrittenIsToldAndWhatItCannotTakeStandsInTheLog)
{
    testsupport::expectErrors();
    testsupport::LogRecorder log;
    beginRun();
    answer(1);
    m_results.reset();
    m_results.emplace(path(), std::chrono::milliseconds(0));
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    // All behind the first page, whose header a connection reads first.
    ASSERT_TRUE(file.seek(4096));
    file.write(QByteArray(static_cast<int>(file.size() - 4096), 'x'));
    ASSERT_TRUE(file.flush());
    testing::internal::CaptureStderr();
    answer(2);
    answer(3);
    m_results->settle();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              trouble("database disk image is malformed") + loss("database disk image is malformed"));
    EXPECT_TRUE(m_results->hasFailed());
    EXPECT_TRUE(log.anyContains("\"call\":2"));
    EXPECT_TRUE(log.anyContains("\"call\":3"));
}

TEST_F(SqliteFailureTest, AFileThatHasBeenRemovedIsMadeAnewWithAllThatItHeld)
{
    for (const bool withItsLog : {false, true}) {
        m_results.reset();
        ASSERT_TRUE(!QFile::exists(path()) || QFile::remove(path()));
        m_results.emplace(path());
        beginRun();
        answer(1);
        ASSERT_TRUE(QFile::remove(path()));
        if (withItsLog) {
            QFile::remove(path() + "-wal");
            QFile::remove(path() + "-shm");
        }
        answer(2);
        EXPECT_EQ(rows("SELECT call FROM calls"), (QStringList{"1", "2"}));
        EXPECT_EQ(rows("SELECT value FROM answers"), (QStringList{"A1", "A1"}));
        EXPECT_EQ(rows("SELECT run FROM runs"), QStringList{"r"});
        EXPECT_EQ(rows("PRAGMA integrity_check"), QStringList{"ok"});
        m_results->settle();
        EXPECT_FALSE(m_results->hasFailed());
    }
}

TEST_F(SqliteFailureTest, AFileThatHasBeenMovedIsWholeAndTheNextOneHasTheRestOfTheRun)
{
    beginRun();
    answer(1);
    ASSERT_TRUE(QFile::rename(path(), m_files.path("moved.sqlite")));
    answer(2);
    EXPECT_EQ(rows("SELECT call FROM calls"), QStringList{"2"});
    EXPECT_EQ(rows("SELECT run FROM runs"), QStringList{"r"});
    const auto moved = [this](const QString &question) {
        return testsupport::rowsOfFile(m_files.path("moved.sqlite"), question);
    };
    EXPECT_EQ(moved("SELECT call FROM calls"), QStringList{"1"});
    EXPECT_EQ(moved("PRAGMA integrity_check"), QStringList{"ok"});
}

TEST_F(SqliteFailureTest, AnOlderCopyInItsPlaceGetsWhatItLacksAndNothingTwice)
{
    beginRun();
    answer(1);
    m_results.reset();
    ASSERT_TRUE(QFile::copy(path(), m_files.path("copy.sqlite")));
    m_results.emplace(path());
    answer(2);
    ASSERT_EQ(std::rename(m_files.path("copy.sqlite").toLocal8Bit(), path().toLocal8Bit()), 0);
    answer(3);
    EXPECT_EQ(rows("SELECT call FROM calls ORDER BY call"), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(rows("SELECT call FROM answers ORDER BY call"), (QStringList{"1", "2", "3"}));
}

TEST_F(SqliteFailureTest, SomethingElseInItsPlaceIsLeftAloneAndHoldsUpAnswersUntilItGoes)
{
    testsupport::expectErrors();
    beginRun();
    answer(1);
    ASSERT_TRUE(QFile::remove(path()));
    m_files.write("results.sqlite", "another's");
    testing::internal::CaptureStderr();
    answer(2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), trouble("file is not a database"));
    EXPECT_EQ(m_files.read("results.sqlite"), "another's");
    ASSERT_TRUE(QFile::remove(path()));
    m_results->settle();
    EXPECT_EQ(rows("SELECT call FROM calls"), (QStringList{"1", "2"}));
    EXPECT_FALSE(m_results->hasFailed());
}

/// Gives up what the superuser may do, who is never refused a file.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        if (m_before == 0) {
            EXPECT_EQ(::seteuid(Nobody), 0);
        }
    }
    ~OrdinaryUser() { EXPECT_EQ(::seteuid(m_before), 0); }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    uid_t m_before = ::geteuid();
};

TEST_F(SqliteFailureTest, AFileThatMayOnlyBeReadIsRefusedAtOnce)
{
    m_results.reset();
    ASSERT_TRUE(QFile::setPermissions(m_files.folder(), QFile::Permissions(0x7777)));
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::ReadOwner | QFile::ReadOther));
    const OrdinaryUser user;
    EXPECT_EQ(testsupport::refusalOf([this] { const SqliteResults results(path()); }),
              path() + ": Permission denied");
}

TEST_F(SqliteFailureTest, AFolderThatMayOnlyBeReadIsRefusedAtOnce)
{
    m_results.reset();
    // The file itself may be written, but not the log beside it, without which it cannot.
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::Permissions(0x6666)));
    ASSERT_TRUE(QFile::setPermissions(m_files.folder(), QFile::Permissions(0x5555)));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(testsupport::refusalOf([this] {
                        const SqliteResults results(path());
                    }).startsWith(path() + ": "));
    }
    ASSERT_TRUE(QFile::setPermissions(m_files.folder(), QFile::Permissions(0x7777)));
}

} // namespace
