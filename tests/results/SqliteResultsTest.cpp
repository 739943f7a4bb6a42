#include "station/results/Results.h"
#include "tests/results/Tables.h"
#include "tests/station/StationFiles.h"

#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>
#include <thread>
#include <vector>

using platform::Dictionary;
using platform::Error;
using platform::Value;
using station::ResultOwner;
using station::Results;

namespace {

const ResultOwner ofSystem{"ask.lua", 3, {}, 0, "G1", {"S4"}};
const ResultOwner ofGroup{"both.lua", {}, "G1", 1, "G1", {"S1", "S2"}};

KVKLuaCall answered(const Value &result)
{
    return {"showView", {}, result, std::nullopt};
}

class SqliteResultsTest : public ::testing::Test
{
protected:
    SqliteResultsTest()
    {
        m_results.emplace(station::ResultsTargets{path(), {}}, false);
        m_results->beginRun("Line 3", "/srv/line3/station.toml", "B7");
        m_results->beginSequence(ofSystem);
        m_results->beginSequence(ofGroup);
    }
    QString path() const { return m_files.path("results.sqlite"); }
    /// Seen by another connection while the station has the file open.
    QStringList rows(const QString &question)
    {
        EXPECT_FALSE(m_results->hasFailed());
        return testsupport::rowsOfFile(path(), question);
    }

    testsupport::StationFiles m_files;
    std::optional<Results> m_results;
};

TEST_F(SqliteResultsTest, ARunHasItsStationConfigurationOperatorAndStart)
{
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
    m_results->beginRun("Line 3", "/srv/line3/station.toml");
    EXPECT_EQ(rows("SELECT station, station_id, configuration, operator FROM runs ORDER BY operator DESC"),
              (QStringList{"Line 3|-|/srv/line3/station.toml|B7", "Line 3|-|/srv/line3/station.toml|-"}));
    const QString text = rows("SELECT started FROM runs").value(0);
    EXPECT_TRUE(text.endsWith('Z') && text.size() == 24) << text.toStdString();
    EXPECT_GE(QDateTime::fromString(text, Qt::ISODateWithMs).addSecs(60), before);
    EXPECT_EQ(rows("SELECT count(DISTINCT run) FROM runs"), QStringList{"2"});
}

TEST_F(SqliteResultsTest, ASequenceIsThereFromItsBeginAndGetsItsEnd)
{
    EXPECT_EQ(rows("SELECT sequence, script, system, group_name, slot, outcome, ended FROM sequences"),
              (QStringList{"0|ask.lua|3|G1|S4|-|-", "1|both.lua|-|G1|-|-|-"}));
    m_results->writeEnd(ofSystem, {KVKLuaOutcome::Erred, 7, "ask.lua:1: why", "ask.lua:1: in main chunk"});
    EXPECT_EQ(rows("SELECT sequence, outcome, value, message, traceback, ended >= started FROM sequences"),
              (QStringList{"0|erred|7|ask.lua:1: why|ask.lua:1: in main chunk|1", "1|-|-|-|-|-"}));
}

TEST_F(SqliteResultsTest, ACallHasItsAnswerItsButtonItsOperatorAndItsTimes)
{
    station::CallStart start;
    start.time = start.time.addMSecs(-1500);
    start.point -= std::chrono::milliseconds(1500);
    m_results->writeCall(ofSystem, answered(Dictionary{{"SN", "A1"}, {"clickedButton", "Pass"}}), start);
    EXPECT_EQ(
        rows("SELECT sequence, call, function, operator, result, clicked_button, error_code FROM calls"),
        QStringList{"0|1|showView|B7|{\"SN\":\"A1\",\"clickedButton\":\"Pass\"}|Pass|-"});
    EXPECT_EQ(rows("SELECT milliseconds >= 1500, started < ended FROM calls"), QStringList{"1|1"});
    EXPECT_EQ(rows("SELECT sequence, call, position, slot, label, value FROM answers"),
              QStringList{"0|1|1|S4|SN|A1"});
}

TEST_F(SqliteResultsTest, WhatACallTookIsTrueThoughTheClockWasSetBack)
{
    station::CallStart start;
    start.time = start.time.addSecs(3600);
    m_results->writeCall(ofSystem, answered(true), start);
    EXPECT_EQ(rows("SELECT milliseconds BETWEEN 0 AND 600000, started > ended FROM calls"),
              QStringList{"1|1"});
}

TEST_F(SqliteResultsTest, AnErrorIsKeptWithDomainCodeAndMessage)
{
    m_results->writeCall(ofGroup, {"getData", {}, {}, Error{"SomeDomain", 201, "not \"found\""}});
    EXPECT_EQ(rows("SELECT result, error_domain, error_code, error_message FROM calls"),
              QStringList{"null|SomeDomain|201|not \"found\""});
}

TEST_F(SqliteResultsTest, CallsAreCountedInEachSequenceAndEachRun)
{
    m_results->writeCall(ofSystem, answered(1));
    m_results->writeCall(ofGroup, answered(2));
    m_results->writeCall(ofSystem, answered(3));
    m_results->beginRun("Line 3", "/srv/line3/station.toml");
    m_results->writeCall(ofSystem, answered(4));
    EXPECT_EQ(rows("SELECT sequence, call, result, operator FROM calls ORDER BY result"),
              (QStringList{"0|1|1|B7", "1|1|2|B7", "0|2|3|B7", "0|1|4|-"}));
}

TEST_F(SqliteResultsTest, ARefusedEntryIsKeptWithKindTextAndWhere)
{
    m_results->writeRefusal({"length", "A", "S4", 3, "G1"});
    m_results->writeRefusal({"duplicate", "'; DELETE FROM runs; --", {}, {}, "G1"});
    EXPECT_EQ(rows("SELECT refusal, kind, text, system, group_name, slot, operator FROM refusals"),
              (QStringList{"1|length|A|3|G1|S4|B7", "2|duplicate|'; DELETE FROM runs; --|-|G1|-|B7"}));
    EXPECT_EQ(rows("SELECT count(*) FROM runs"), QStringList{"1"});
}

TEST_F(SqliteResultsTest, WhateverAnOperatorTypesIsAValueAndNeverAStatement)
{
    const QString nasty = QString::fromUtf8("a'b\"c\\d'); DROP TABLE calls; --\n$1 ? :x %1 槽 😀");
    m_results->writeCall({nasty, 1, {}, 0, nasty, {nasty}},
                         {nasty, {}, Dictionary{{nasty, nasty}}, Error{nasty, 1, nasty}});
    EXPECT_EQ(rows("SELECT label FROM answers"), QStringList{nasty});
    EXPECT_EQ(rows("SELECT value FROM answers"), QStringList{nasty});
    EXPECT_EQ(rows("SELECT slot FROM answers"), QStringList{nasty});
    EXPECT_EQ(rows("SELECT error_message FROM calls"), QStringList{nasty});
}

TEST_F(SqliteResultsTest, TextThatIsNoUnicodeComesBackWholeFromTheResult)
{
    const QString halves = QString("a") + QChar(0xd83d) + "b" + QChar(0) + QChar(0xde00);
    m_results->writeCall(ofSystem, answered(Dictionary{{"SN", halves}}));
    const QJsonDocument result = QJsonDocument::fromJson(rows("SELECT result FROM calls").value(0).toUtf8());
    EXPECT_EQ(result.object().value("SN").toString(), halves);
    EXPECT_EQ(rows("SELECT value FROM answers"), QStringList{"a\\ud83db\\u0000\\ude00"});
}

TEST_F(SqliteResultsTest, ATextOfAMegabyteIsKeptWhole)
{
    QString text(1'000'000, QChar(0x69fd));
    text[999'999] = '\'';
    m_results->writeCall(ofSystem, answered(Dictionary{{"SN", text}}));
    EXPECT_TRUE(rows("SELECT value FROM answers").value(0) == text);
}

/// Those of the page, as they stand there.
QStringList exampleQuestions()
{
    QFile page(DOCS_PATH "/results.md");
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    const QString block = QString::fromUtf8(page.readAll()).section("```sql", 1, 1).section("```", 0, 0);
    return block.trimmed().split(';', Qt::SkipEmptyParts);
}

TEST_F(SqliteResultsTest, TheQuestionsOfThePageAreAnswered)
{
    m_results->writeCall(ofSystem, answered(Dictionary{{"SN", "SN260001"}}));
    m_results->writeEnd(ofSystem, {});
    const QStringList questions = exampleQuestions();
    ASSERT_EQ(questions.size(), 3);
    EXPECT_EQ(rows(questions.at(0)), QStringList{"G1|S4|1"});
    EXPECT_TRUE(rows(questions.at(1)).value(0).endsWith("|Line 3|passed|S4|SN"));
    EXPECT_TRUE(rows(questions.at(2)).value(0).startsWith("showView|1|"));
}

TEST_F(SqliteResultsTest, AnAnswerIsThereWhenItsCallReturns)
{
    for (int i = 1; i <= 20; ++i) {
        m_results->writeCall(ofSystem, answered(Dictionary{{"SN", QString::number(i)}}));
        EXPECT_EQ(testsupport::rowsOfFile(path(), "SELECT count(*) FROM answers"),
                  QStringList{QString::number(i)});
    }
}

TEST_F(SqliteResultsTest, AFurtherStationIsRefusedAsLongAsThereIsAFirst)
{
    EXPECT_EQ(testsupport::refusalOf([this] {
                  const Results second({path(), {}}, false);
              }),
              "--results: " + path() + ": another station writes to it");
    m_results.reset();
    m_results.emplace(station::ResultsTargets{{}, path()}, false);
    EXPECT_EQ(testsupport::refusalOf([this] {
                  const Results second({{}, path()}, false);
              }),
              "results.database: " + path() + ": another station writes to it");
    EXPECT_EQ(rows("SELECT count(*) FROM runs"), QStringList{"1"}) << "what was there stays";
}

TEST_F(SqliteResultsTest, SeveralPlacesGetTheSame)
{
    m_results.emplace(station::ResultsTargets{m_files.path("r.jsonl"), m_files.path("b.SQLITE")}, false);
    m_results->beginRun("Line 3", "/srv/line3/station.toml", "B7");
    m_results->writeCall(ofSystem, answered(Dictionary{{"SN", "A1"}}));
    const QStringList lines = m_files.lines("r.jsonl");
    ASSERT_EQ(lines.size(), 2);
    for (const QString &line : lines)
        EXPECT_EQ(QJsonDocument::fromJson(line.toUtf8()).object().value("operator").toString(), "B7");
    const QString run = QJsonDocument::fromJson(lines.at(1).toUtf8()).object().value("run").toString();
    EXPECT_EQ(testsupport::rowsOfFile(m_files.path("b.SQLITE"), "SELECT run, value FROM answers"),
              QStringList{run + "|A1"});
}

TEST_F(SqliteResultsTest, ManySequencesWriteAtOnceAndAreReadMeanwhile)
{
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([this, thread] {
            for (int i = 1; i <= 10; ++i)
                m_results->writeCall({"s", thread, {}, thread, "G", {"S"}},
                                     answered(Dictionary{{"a", "1"}, {"b", "2"}}));
        });
    }
    for (int i = 0; i < 20; ++i) {
        // Whole answers only, in their order, at any moment.
        EXPECT_EQ(testsupport::rowsOfFile(
                      path(), "SELECT 1 FROM calls c WHERE (SELECT count(*) FROM answers a WHERE a.sequence ="
                              " c.sequence AND a.call = c.call) <> 2"),
                  QStringList());
        EXPECT_EQ(testsupport::rowsOfFile(
                      path(), "SELECT 1 FROM calls GROUP BY sequence HAVING max(call) <> count(*)"),
                  QStringList());
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(rows("SELECT count(*) FROM answers"), QStringList{"160"});
}

} // namespace
