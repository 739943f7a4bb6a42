#include "tests/end_to_end/StationRun.h"
#include "tests/support/Wait.h"

#include <QDateTime>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <vector>

using testsupport::StationRun;

namespace {

/// Eight systems that have answered one question each and wait with a second one.
constexpr const char *AskTwice = R"(
    assert(showView(systemIndex, { input = { "SN" } }).SN == "n" .. systemIndex)
    showView(systemIndex, { button = { "No", "Yes" } })
)";

/// Answers the first questions, waits for the second ones, and gives the sign that all of them are there.
constexpr const char *AnswerOnce = R"(
    -- Each panel takes the focus when it opens: all are there before anything is typed.
    for index = 0, 7 do operator.waitForPanel(tostring(index), 30) end
    for index = 0, 7 do
        local key = tostring(index)
        operator.click(key .. "-SN")
        operator.scan("n" .. key)
        operator.click({ panel = key, title = "OK" })
        operator.waitForPanelGone(key, 30)
    end
    for index = 0, 7 do operator.waitForPanel(tostring(index), 30) end
)";

StationRun &prepare(StationRun &station)
{
    return station.groups({"G1", "G2"}).slotNames({"S1", "S2", "S3", "S4"}).perSystem(AskTwice);
}

/// Every sequence was stopped, with the first answer and the interrupted call in the results.
void expectEightStopped(const StationRun &station)
{
    EXPECT_EQ(station.status(), 1);
    for (int system = 0; system < 8; ++system) {
        const QString subject = QString::number(system);
        EXPECT_EQ(station.outcome(system), "stopped");
        const QList<QJsonObject> calls = station.calls("showView", subject);
        ASSERT_EQ(calls.size(), 2) << station.everything().toStdString();
        EXPECT_EQ(calls.first().value("result").toObject().value("SN").toString(), "n" + subject);
        EXPECT_TRUE(calls.last().value("result").isNull());
        const QString message = calls.last().value("error").toObject().value("message").toString();
        EXPECT_TRUE(message.contains("The station stopped while waiting for the operator: " + subject))
            << message.toStdString();
    }
}

QDateTime timeOf(const QJsonObject &line)
{
    return QDateTime::fromString(line.value("time").toString(), Qt::ISODateWithMs);
}

class EndOfTheRun : public ::testing::TestWithParam<const char *>
{};

TEST_P(EndOfTheRun, StopsEightWaitingCallsWithinASecondAndKeepsAllResults)
{
    StationRun station;
    prepare(station).argument("--plugin").argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libWindowEnds.so"));
    // The sequence of the station waits for the operator's sign, an entry in the loop field.
    station.perStation(
        QStringLiteral("while getLoopConfig().LoopMax ~= 1 do sleep(0.02) end %1()").arg(GetParam()));
    station.operatorDoes(QLatin1String(AnswerOnce) + R"(operator.click("Loop") operator.scan("1"))");
    station.run();
    expectEightStopped(station);
    const QList<QJsonObject> asked = station.calls(GetParam(), "");
    ASSERT_EQ(asked.size(), 1) << station.everything().toStdString();
    EXPECT_LT(timeOf(asked.first()).msecsTo(timeOf(station.results().last())), 1000);
}

INSTANTIATE_TEST_SUITE_P(Ways, EndOfTheRun, ::testing::Values("pressStop", "closeWindow"),
                         [](const auto &testCase) { return std::string(testCase.param); });

TEST(Stop, AFailedOperatorEndsEightWaitingCallsAndAllResultsAreKept)
{
    StationRun station;
    prepare(station).operatorDoes(QLatin1String(AnswerOnce) + "error('enough')");
    station.run();
    expectEightStopped(station);
    EXPECT_TRUE(station.errors().contains("enough")) << station.errors().toStdString();
}

/// Writes a file, which tells the test that the station is where it is to be.
QString sign(const StationRun &station)
{
    return QStringLiteral("io.open('%1', 'w'):close() ").arg(station.path("sign"));
}

void sendWhenSigned(StationRun &station, const std::vector<int> &signalsToSend)
{
    ASSERT_TRUE(testsupport::waitUntil([&] { return QFile::exists(station.path("sign")); }))
        << station.everything().toStdString();
    for (const int number : signalsToSend)
        EXPECT_EQ(::kill(static_cast<pid_t>(station.process().processId()), number), 0);
}

/// A signal that asks the station to end, alone or after another one.
class EndingSignal : public ::testing::TestWithParam<std::vector<int>>
{};

TEST_P(EndingSignal, StopsEightWaitingCallsAndKeepsAllResults)
{
    StationRun station;
    prepare(station).operatorDoes(QLatin1String(AnswerOnce) + sign(station) + "operator.sleep(3600)");
    station.start();
    sendWhenSigned(station, GetParam());
    station.finish();
    expectEightStopped(station);
    EXPECT_EQ(station.errors(), "");
}

INSTANTIATE_TEST_SUITE_P(Ways, EndingSignal,
                         ::testing::Values(std::vector<int>{SIGINT}, std::vector<int>{SIGTERM},
                                           std::vector<int>{SIGHUP},
                                           std::vector<int>{SIGTERM, SIGHUP, SIGINT, SIGTERM}));

TEST(Stop, AnOperatorsScriptInsideALibraryFunctionIsNamedAndLeftBehind)
{
    StationRun station;
    station.slotNames({"S1", "S2"}).perSystem("showView(systemIndex, { button = { 'No', 'Yes' } })");
    // A search that takes longer than anybody lives.
    station.operatorDoes("operator.waitForPanel('0', 30) operator.waitForPanel('1', 30) " + sign(station) +
                         "string.find(string.rep('a', 40), string.rep('a*', 40) .. 'b')");
    station.start();
    sendWhenSigned(station, {SIGTERM});
    station.finish();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errorLine(), "station: does not end when stopped: the operator's script");
    EXPECT_EQ(station.outcome(0), "stopped");
    EXPECT_EQ(station.outcome(1), "stopped");
}

TEST(Stop, BusySequencesDoNotKeepASignalFromTheStation)
{
    StationRun station;
    QStringList names;
    for (int i = 0; i < 64; ++i)
        names.append(QStringLiteral("S%1").arg(i));
    station.slotNames(names).perSystem("if systemIndex == 63 then " + sign(station) +
                                       " end while true do setLoop(2) end");
    station.start();
    sendWhenSigned(station, {SIGTERM});
    station.finish();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errors(), "");
    for (int i = 0; i < 64; ++i)
        EXPECT_EQ(station.outcome(i), "stopped");
}

constexpr const char *AskOnce = "showView(systemIndex, { button = { 'No', 'Yes' } })";

TEST(Stop, WithoutAnOperatorARunThatWaitsForAnAnswerIsStoppedAndSaysWhoWaits)
{
    StationRun station;
    station.slotNames({"S1", "S2"}).perSystem("if systemIndex == 1 then " + QLatin1String(AskOnce) + " end");
    station.run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errorLine(),
              "station: operator: there is none (--operator FILE), but an answer is waited for by system 1");
    EXPECT_EQ(station.outcome(0), "passed");
    EXPECT_EQ(station.outcome(1), "stopped");
}

TEST(Stop, AnAnswerThatTheOperatorsScriptDoesNotGiveEndsTheRunAndSaysWhoWaits)
{
    StationRun station;
    station.perSystem(AskOnce).operatorDoes("operator.waitForPanel('0', 30)");
    station.run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errorLine(),
              "station: operator: the script has ended, but an answer is waited for by system 0");
    EXPECT_EQ(station.outcome(0), "stopped");
}

} // namespace
