#include "station/results/Schema.h"

#include "station/results/SqliteResults.h"
#include "tests/results/Tables.h"
#include "tests/station/StationFiles.h"

using station::SqliteResults;
using testsupport::rowsOfFile;

namespace {

class SchemaTest : public ::testing::Test
{
protected:
    QString path() const { return m_files.path("results.sqlite"); }
    /// A file as the first version left it, with an answer in it.
    void makeVersionOne() const
    {
        testsupport::runOnFile(path(), station::schema::stepTo(1, station::schema::Dialect::Sqlite));
        testsupport::runOnFile(
            path(), {"PRAGMA user_version = 1", "PRAGMA application_id = 1263948371",
                     "INSERT INTO runs VALUES ('r1', 'Line 3', NULL, '/s.toml', '2026-11-21T08:00:00.000Z')",
                     "INSERT INTO answers VALUES ('r1', 0, 1, 1, 'S1', 'SN', 'A1')"});
    }
    QString version() const { return rowsOfFile(path(), "PRAGMA user_version").value(0); }

    testsupport::StationFiles m_files;
};

TEST_F(SchemaTest, ANewFileHasTheTablesOfThisVersion)
{
    {
        const SqliteResults results(path());
    }
    EXPECT_EQ(version(), "2");
    EXPECT_EQ(rowsOfFile(path(), "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"),
              (QStringList{"answers", "calls", "refusals", "runs", "sequences"}));
}

TEST_F(SchemaTest, AFileOfTheFirstVersionIsBroughtToThisOneWithAllThatItHolds)
{
    makeVersionOne();
    {
        SqliteResults results(path());
        results.write(station::RunBegun{"r2", "Line 3", "/s.toml", "B7", QDateTime::currentDateTimeUtc()});
        results.write(station::EntryRefused{
            "r2", {"length", "A", "S1", 0, "G1"}, 1, "B7", QDateTime::currentDateTimeUtc()});
    }
    EXPECT_EQ(version(), "2");
    EXPECT_EQ(rowsOfFile(path(), "SELECT run, station, operator FROM runs ORDER BY run"),
              (QStringList{"r1|Line 3|-", "r2|Line 3|B7"}));
    EXPECT_EQ(rowsOfFile(path(), "SELECT * FROM answers"), QStringList{"r1|0|1|1|S1|SN|A1"});
    EXPECT_EQ(rowsOfFile(path(), "SELECT run, kind FROM refusals"), QStringList{"r2|length"});
}

TEST_F(SchemaTest, AMigrationThatFailsLeavesTheFileAsItWas)
{
    makeVersionOne();
    // In the way of the last step's last statement.
    testsupport::runOnFile(path(), {"CREATE TABLE refusals (x)"});
    EXPECT_EQ(testsupport::refusalOf([this] { const SqliteResults results(path()); }),
              path() + ": table refusals already exists");
    EXPECT_EQ(version(), "1");
    EXPECT_FALSE(rowsOfFile(path(), "SELECT name FROM pragma_table_info('runs')").contains("operator"));
}

TEST_F(SchemaTest, AFileOfANewerVersionIsRefusedAndLeftAlone)
{
    {
        const SqliteResults results(path());
    }
    testsupport::runOnFile(path(), {"PRAGMA user_version = 3"});
    EXPECT_EQ(testsupport::refusalOf([this] { const SqliteResults results(path()); }),
              path() + ": the results are of version 3, and this station knows up to 2");
    EXPECT_EQ(version(), "3");
}

TEST_F(SchemaTest, ADatabaseOfSomebodyElseIsRefusedAndLeftAlone)
{
    testsupport::runOnFile(path(), {"CREATE TABLE recipes (name)"});
    EXPECT_EQ(testsupport::refusalOf([this] { const SqliteResults results(path()); }),
              path() + ": the file holds something else than results");
    EXPECT_EQ(rowsOfFile(path(), "SELECT name FROM sqlite_master"), QStringList{"recipes"});
}

TEST_F(SchemaTest, AFileThatIsNoDatabaseIsRefusedAndLeftAlone)
{
    const QByteArray text(5000, 'x');
    m_files.write("results.sqlite", text);
    EXPECT_EQ(testsupport::refusalOf([this] { const SqliteResults results(path()); }),
              path() + ": file is not a database");
    EXPECT_EQ(m_files.read("results.sqlite"), text);
}

} // namespace
