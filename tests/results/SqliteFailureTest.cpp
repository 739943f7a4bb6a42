#include "station/results/Schema.h"
#include "station/results/SqliteResults.h"
#include "tests/results/FileSizeLimit.h"
#include "tests/results/Tables.h"
#include "tests/station/StationFiles.h"

#include <QFile>

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
    /// What is said on the error stream about the file.
    std::string loss(const char *why) const
    {
        return "station: results are lost: " + path().toStdString() + ": " + why + "\n";
    }
    QStringList rows(const QString &question) const { return testsupport::rowsOfFile(path(), question); }

    testsupport::StationFiles m_files;
    QDateTime m_time = QDateTime::currentDateTimeUtc();
    std::optional<SqliteResults> m_results;
};

TEST_F(SqliteFailureTest, ALockedFileLosesWhatComesMeanwhileAndNothingElse)
{
    testing::internal::CaptureStderr();
    {
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
        } const locker(path());
        beginRun();
        answer(1);
        answer(2);
    }
    answer(3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), loss("database is locked")) << "said once";
    EXPECT_TRUE(m_results->hasFailed());
    EXPECT_EQ(rows("SELECT call FROM calls"), QStringList{"3"});
    EXPECT_EQ(rows("SELECT run FROM runs"), QStringList{"r"}) << "what the later ones belong to";
}

TEST_F(SqliteFailureTest, AFullDiskIsToldAndLeavesWholeAnswers)
{
    beginRun();
    answer(1);
    testing::internal::CaptureStderr();
    {
        const testsupport::FileSizeLimit limit(200'000);
        answer(2, QString(1'000'000, 'x'));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), loss("disk I/O error"));
    answer(3);
    EXPECT_TRUE(m_results->hasFailed());
    EXPECT_EQ(rows("SELECT call FROM answers"), (QStringList{"1", "3"}));
    EXPECT_EQ(rows("PRAGMA integrity_check"), QStringList{"ok"});
}

TEST_F(SqliteFailureTest, AFileThatIsOverwrittenIsTold)
{
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
    EXPECT_EQ(testing::internal::GetCapturedStderr(), loss("database disk image is malformed"));
    EXPECT_TRUE(m_results->hasFailed());
}

TEST_F(SqliteFailureTest, AFileThatHasBeenRemovedOrReplacedIsTold)
{
    beginRun();
    m_results->settle();
    testing::internal::CaptureStderr();
    ASSERT_TRUE(QFile::remove(path()));
    answer(1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), loss("the file has been removed"));
    m_results.reset();
    m_results.emplace(path());
    ASSERT_TRUE(QFile::rename(path(), m_files.path("moved.sqlite")));
    m_files.write("results.sqlite", "another's");
    testing::internal::CaptureStderr();
    answer(1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), loss("the file has been replaced"));
    EXPECT_EQ(m_files.read("results.sqlite"), "another's");
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
