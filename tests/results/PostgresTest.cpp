#include "station/results/PostgresResults.h"
#include "station/results/ResultsServer.h"
#include "station/results/Schema.h"
#include "tests/results/PostgresServer.h"
#include "tests/results/Tables.h"
#include "tests/station/StationFiles.h"
#include "tests/support/LogTrap.h"
#include "tests/support/Wait.h"

#include <QFile>

#include <gmock/gmock.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <thread>
#include <vector>

using platform::Dictionary;
using station::Forwarder;
using station::PostgresResults;
using station::ResultOwner;
using station::ServerAddress;
using testsupport::PostgresServer;
using testsupport::waitUntil;

namespace {

const ResultOwner ofSystem{"ask.lua", 3, {}, 0, "G1", {"S4"}};

/// Tries again at once: what is waited for is the server, and not a clock.
Forwarder::Patience eager()
{
    return {station::Backoff(std::chrono::milliseconds(10), std::chrono::milliseconds(100)),
            std::chrono::seconds(60)};
}

/// Gives up at once at the end, for a server of which nothing is to be hoped.
Forwarder::Patience hasty()
{
    return {station::Backoff(std::chrono::milliseconds(10), std::chrono::milliseconds(100)),
            std::chrono::milliseconds(0)};
}

class PostgresTest : public ::testing::Test
{
protected:
    QString outbox() const { return m_files.path("outbox.sqlite"); }
    std::unique_ptr<PostgresResults> results(const Forwarder::Patience &patience = eager()) const
    {
        return std::make_unique<PostgresResults>(ServerAddress(m_server.address()), outbox(), patience);
    }
    void beginRun(PostgresResults &results, const QString &run) const
    {
        results.write(station::RunBegun{run, "Line 3", "/s.toml", "B7", m_time});
        results.write(station::SequenceBegun{run, ofSystem, m_time});
    }
    void answer(PostgresResults &results, const QString &run, int number, const QString &text) const
    {
        const Dictionary entered{{"SN", text}, {"clickedButton", "Pass"}};
        results.write(station::CallDone{
            run, ofSystem, {"showView", {}, entered, {}}, number, "B7", m_time, m_time, 1500});
    }
    static bool allSent(PostgresResults &results)
    {
        results.settle();
        return waitUntil([&results] { return results.state().waiting().isEmpty(); },
                         std::chrono::seconds(60));
    }

    testsupport::StationFiles m_files;
    PostgresServer m_server;
    const QDateTime m_time = QDateTime::fromString("2026-11-21T08:00:00.123Z", Qt::ISODateWithMs);
};

TEST_F(PostgresTest, WhatIsWrittenArrivesWithAllItsValues)
{
    const QString nasty = QString::fromUtf8("a'b\"c\\d\\'); DROP TABLE calls; --\n$1 ? :x %1 槽 😀 E'\\x'");
    QString text(1'000'000, QChar(0x69fd));
    text[999'999] = '\\';
    m_server.start();
    {
        const auto sink = results();
        beginRun(*sink, "r");
        answer(*sink, "r", 1, nasty);
        answer(*sink, "r", 2, text);
        answer(*sink, "r", 3, QString("a") + QChar(0) + QChar(0xd83d) + "b");
        sink->write(station::EntryRefused{"r", {"length", nasty, "S4", 3, "G1"}, 1, "B7", m_time});
        sink->write(station::SequenceDone{"r", ofSystem, {KVKLuaOutcome::Failed, false, nasty}, m_time});
    }
    EXPECT_EQ(m_server.rows("SELECT run, station, length(station_id), operator FROM runs"),
              QStringList{"r|Line 3|36|B7"});
    EXPECT_EQ(m_server.rows("SELECT value FROM answers WHERE call = 1"), QStringList{nasty});
    EXPECT_TRUE(m_server.rows("SELECT value FROM answers WHERE call = 2").value(0) == text);
    EXPECT_EQ(m_server.rows("SELECT value FROM answers WHERE call = 3"), QStringList{"a\\u0000\\ud83db"});
    EXPECT_EQ(m_server.rows("SELECT slot, label FROM answers WHERE call = 1"), QStringList{"S4|SN"});
    EXPECT_EQ(m_server.rows(
                  "SELECT extract(epoch FROM ended) * 1000 = 1795248000123, milliseconds,"
                  " clicked_button, operator, result::json ->> 'clickedButton' FROM calls WHERE call = 1"),
              QStringList{"true|1500|Pass|B7|Pass"});
    EXPECT_EQ(m_server.rows("SELECT outcome, value, message FROM sequences"),
              QStringList{"failed|false|" + nasty});
    EXPECT_EQ(m_server.rows("SELECT kind, text, system, slot FROM refusals"),
              QStringList{"length|" + nasty + "|3|S4"});
    EXPECT_EQ(testsupport::rowsOfFile(outbox(), "SELECT count(*) FROM letters"), QStringList{"0"});
}

TEST_F(PostgresTest, WhatTheServerCannotTakeWaitsForItOverAnEndOfTheStation)
{
    {
        testing::internal::CaptureStdout();
        auto sink = results(hasty());
        beginRun(*sink, "r");
        answer(*sink, "r", 1, "A1");
        answer(*sink, "r", 2, "A2");
        EXPECT_FALSE(sink->hasFailed());
        EXPECT_EQ(sink->state().waiting(), "2 answers wait for the results server");
        sink.reset();
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "2 answers wait for the results server " +
                      ServerAddress(m_server.address()).name().toStdString() +
                      " and will be sent at the next start\n");
    }
    testing::internal::CaptureStdout();
    {
        const auto sink = results();
        EXPECT_EQ(sink->state().waiting(), "2 answers wait for the results server");
        m_server.start();
        EXPECT_TRUE(allSent(*sink));
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(m_server.rows("SELECT value FROM answers ORDER BY call"), (QStringList{"A1", "A2"}));
}

TEST_F(PostgresTest, ALetterThatArrivedThoughNobodyHeardOfItIsThereOnce)
{
    {
        testing::internal::CaptureStdout();
        const auto sink = results(hasty());
        beginRun(*sink, "r");
        answer(*sink, "r", 1, "A1");
        sink->write(station::SequenceDone{"r", ofSystem, {}, m_time});
        sink->settle();
    }
    static_cast<void>(testing::internal::GetCapturedStdout());
    m_server.start();
    // What a station does that is killed between the server's commit and its own.
    station::ResultsServer(ServerAddress(m_server.address())).store(station::Outbox(outbox()).oldest(100));
    EXPECT_EQ(m_server.rows("SELECT count(*) FROM answers"), QStringList{"1"});
    const auto sink = results();
    answer(*sink, "r", 2, "A2");
    ASSERT_TRUE(allSent(*sink));
    EXPECT_EQ(m_server.rows("SELECT call, value FROM answers ORDER BY call"), (QStringList{"1|A1", "2|A2"}));
    EXPECT_EQ(m_server.rows("SELECT count(*) FROM runs"), QStringList{"1"});
}

TEST_F(PostgresTest, ARowThatIsRefusedForGoodIsSetApartAndHoldsUpNobody)
{
    const struct
    {
        const char *how;
        QStringList make;
        QStringList mend;
        const char *words;
    } cases[] = {
        {"a constraint",
         {"ALTER TABLE answers ADD CONSTRAINT known CHECK (value <> 'bad')"},
         {"ALTER TABLE answers DROP CONSTRAINT known"},
         "violates check constraint \"known\""},
        {"a type that is too small",
         {"ALTER TABLE answers ALTER COLUMN value TYPE VARCHAR(2)"},
         {"ALTER TABLE answers ALTER COLUMN value TYPE TEXT"},
         "value too long for type character varying(2)"},
        {"a trigger at the commit",
         {"CREATE FUNCTION no() RETURNS trigger AS 'BEGIN IF NEW.value = ''bad'' THEN RAISE ''not this one'';"
          " END IF; RETURN NEW; END' LANGUAGE plpgsql",
          "CREATE CONSTRAINT TRIGGER no AFTER INSERT ON answers DEFERRABLE INITIALLY DEFERRED"
          " FOR EACH ROW EXECUTE FUNCTION no()"},
         {"DROP TRIGGER no ON answers"},
         "not this one"}};
    m_server.start();
    testsupport::expectErrors();
    static_cast<void>(station::ResultsServer{ServerAddress(m_server.address())});
    for (const auto &[how, make, mend, words] : cases) {
        SCOPED_TRACE(how);
        m_server.run({"TRUNCATE runs, sequences, calls, answers"});
        m_server.run(make);
        testing::internal::CaptureStdout();
        {
            const auto sink = results();
            beginRun(*sink, "r");
            for (int number = 1; number <= 5; ++number)
                answer(*sink, "r", number, number == 3 ? "bad" : "A" + QString::number(number));
            sink->write(station::SequenceDone{"r", ofSystem, {}, m_time});
            ASSERT_TRUE(allSent(*sink));
            EXPECT_EQ(sink->state().refusals(), "1 answer was refused by the results server");
            EXPECT_FALSE(sink->hasFailed());
        }
        EXPECT_EQ(m_server.rows("SELECT value FROM answers ORDER BY call"),
                  (QStringList{"A1", "A2", "A4", "A5"}));
        EXPECT_EQ(m_server.rows("SELECT count(*) FROM calls"), QStringList{"4"})
            << "an answer is whole or not";
        EXPECT_EQ(m_server.rows("SELECT outcome FROM sequences"), QStringList{"passed"});
        const QStringList refused = testsupport::rowsOfFile(outbox(), "SELECT why FROM refused");
        ASSERT_EQ(refused.size(), 1);
        EXPECT_TRUE(refused.at(0).contains(words)) << refused.at(0).toStdString();
        EXPECT_THAT(testing::internal::GetCapturedStdout(),
                    testing::AllOf(testing::StartsWith("1 answer was refused by the results server"),
                                   testing::HasSubstr(outbox().toStdString())));
        m_server.run(mend);
        {
            const auto sink = results();
            ASSERT_TRUE(allSent(*sink));
            EXPECT_EQ(sink->state().refusals(), "");
        }
        EXPECT_EQ(m_server.rows("SELECT value FROM answers ORDER BY call"),
                  (QStringList{"A1", "A2", "bad", "A4", "A5"}));
        EXPECT_EQ(testsupport::rowsOfFile(outbox(), "SELECT count(*) FROM refused"), QStringList{"0"});
    }
}

TEST_F(PostgresTest, ARightThatIsMissingSetsApartWhatNeedsItAndIsSaidOnce)
{
    m_server.start();
    static_cast<void>(station::ResultsServer{ServerAddress(m_server.address())});
    m_server.run(
        {"CREATE ROLE clerk LOGIN",
         "GRANT SELECT, INSERT, UPDATE ON runs, sequences, calls, answers, results_schema TO clerk"});
    testsupport::expectError("refuses a result, which is set apart in " + outbox() +
                             ": ERROR: permission denied for table refusals");
    testing::internal::CaptureStdout();
    QString told;
    {
        PostgresResults sink(ServerAddress(m_server.address().replace("tester@", "clerk@")), outbox(),
                             eager());
        beginRun(sink, "r");
        for (int number = 1; number <= 3; ++number)
            sink.write(station::EntryRefused{"r", {"length", "x", "S4", 3, "G1"}, number, "B7", m_time});
        answer(sink, "r", 1, "A1");
        ASSERT_TRUE(allSent(sink));
        sink.state().setListener(
            [&told](const QString &text, const QString &why) { told = text + "|" + why; });
        sink.state().setListener({});
    }
    static_cast<void>(testing::internal::GetCapturedStdout());
    EXPECT_TRUE(told.startsWith("Results were refused by the results server|ERROR: permission denied"))
        << told.toStdString();
    EXPECT_EQ(m_server.rows("SELECT value FROM answers"), QStringList{"A1"});
    EXPECT_EQ(testsupport::rowsOfFile(outbox(), "SELECT count(*) FROM refused"), QStringList{"3"});
    m_server.run({"GRANT ALL ON refusals TO clerk"});
    {
        PostgresResults sink(ServerAddress(m_server.address().replace("tester@", "clerk@")), outbox(),
                             eager());
        ASSERT_TRUE(allSent(sink));
    }
    EXPECT_EQ(m_server.rows("SELECT refusal FROM refusals ORDER BY refusal"), (QStringList{"1", "2", "3"}));
}

TEST_F(PostgresTest, TheEndOfASequenceThatIsRefusedGoesWithIt)
{
    m_server.start();
    testsupport::expectErrors();
    static_cast<void>(station::ResultsServer{ServerAddress(m_server.address())});
    m_server.run({"ALTER TABLE sequences ADD CONSTRAINT no CHECK (script <> 'ask.lua')"});
    testing::internal::CaptureStdout();
    {
        const auto sink = results();
        beginRun(*sink, "r");
        answer(*sink, "r", 1, "A1");
        sink->write(station::SequenceDone{"r", ofSystem, {}, m_time});
        ASSERT_TRUE(allSent(*sink));
    }
    static_cast<void>(testing::internal::GetCapturedStdout());
    EXPECT_EQ(m_server.rows("SELECT value FROM answers"), QStringList{"A1"});
    m_server.run({"ALTER TABLE sequences DROP CONSTRAINT no"});
    {
        const auto sink = results();
        ASSERT_TRUE(allSent(*sink));
    }
    EXPECT_EQ(m_server.rows("SELECT script, outcome FROM sequences"), QStringList{"ask.lua|passed"});
}

TEST_F(PostgresTest, FortyStationsThatStartAtOnceMakeTheTablesOnce)
{
    m_server.start();
    std::vector<std::thread> stations;
    std::atomic<int> failed{0};
    for (int i = 0; i < 40; ++i) {
        stations.emplace_back([this, &failed] {
            try {
                const station::ResultsServer server{ServerAddress(m_server.address())};
            } catch (const station::SqlError &error) {
                ++failed;
                ADD_FAILURE() << error.what();
            }
        });
    }
    for (std::thread &station : stations)
        station.join();
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(m_server.rows("SELECT version FROM results_schema"), QStringList{"2"});
}

TEST_F(PostgresTest, TablesOfTheFirstVersionAreBroughtToThisOneAndThoseOfANewerOneAreLeftAlone)
{
    m_server.start();
    m_server.run(station::schema::stepTo(1, station::schema::Dialect::PostgreSql));
    m_server.run({"CREATE TABLE results_schema (version BIGINT NOT NULL)",
                  "INSERT INTO results_schema VALUES (1)",
                  "INSERT INTO runs VALUES ('old', 'Line 1', 'id', '/s', '2026-11-20T08:00:00Z')"});
    const auto sink = results();
    beginRun(*sink, "r");
    ASSERT_TRUE(allSent(*sink));
    EXPECT_EQ(m_server.rows("SELECT run, operator FROM runs ORDER BY run"), (QStringList{"old|-", "r|B7"}));
    m_server.run({"UPDATE results_schema SET version = 3"});
    EXPECT_THROW(station::ResultsServer{ServerAddress(m_server.address())}, station::SqlError);
    EXPECT_EQ(m_server.rows("SELECT version FROM results_schema"), QStringList{"3"});
}

TEST_F(PostgresTest, AnOutboxThatIsRemovedIsSentFromAndToldAsLost)
{
    auto sink = results(hasty());
    beginRun(*sink, "r");
    answer(*sink, "r", 1, "A1");
    ASSERT_TRUE(QFile::remove(outbox()));
    testsupport::expectError("the file has been removed");
    testing::internal::CaptureStderr();
    answer(*sink, "r", 2, "A2");
    answer(*sink, "r", 3, "A3");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "station: results are lost: " + outbox().toStdString() + ": the file has been removed\n");
    EXPECT_TRUE(sink->hasFailed());
    m_server.start();
    EXPECT_TRUE(allSent(*sink));
    EXPECT_EQ(m_server.rows("SELECT value FROM answers ORDER BY call"), (QStringList{"A1", "A2", "A3"}));
}

TEST_F(PostgresTest, AServerThatStandsStillDoesNotKeepTheStationFromEnding)
{
    m_server.start();
    auto sink = results(hasty());
    beginRun(*sink, "r");
    ASSERT_TRUE(allSent(*sink));
    m_server.signalAll(SIGSTOP);
    answer(*sink, "r", 1, "A1");
    testing::internal::CaptureStdout();
    sink.reset();
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::StartsWith("1 answer waits for the results server"));
    m_server.signalAll(SIGCONT);
    sink = results();
    ASSERT_TRUE(allSent(*sink));
    EXPECT_EQ(m_server.rows("SELECT value FROM answers"), QStringList{"A1"});
}

TEST(PostgresPasswordTest, IsTakenFromItsOwnFileAndStandsNowhereElse)
{
    const testsupport::StationFiles files;
    PostgresServer server("scram-sha-256");
    server.start();
    const auto trouble = [&] {
        try {
            const station::ResultsServer session{ServerAddress(server.address())};
        } catch (const station::SqlError &error) {
            return error.text();
        }
        return QString();
    };
    const auto passwordFile = [&files](const QByteArray &content) {
        const QString path = files.write("pgpass", content);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        qputenv("PGPASSFILE", QFile::encodeName(path));
    };
    passwordFile("*:*:*:tester:wrong-one\n");
    EXPECT_TRUE(trouble().contains("password authentication failed")) << trouble().toStdString();
    EXPECT_FALSE(trouble().contains("wrong-one"));
    passwordFile("*:*:*:tester:se'cr\\:et\\\\\n");
    EXPECT_EQ(trouble(), "");
    qunsetenv("PGPASSFILE");
}

} // namespace
