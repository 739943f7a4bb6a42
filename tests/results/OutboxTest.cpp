#include "station/results/Outbox.h"

#include "station/results/OutboxLabel.h"
#include "station/results/Results.h"
#include "tests/results/Tables.h"
#include "tests/station/StationFiles.h"
#include "tests/support/Wait.h"

#include <QFile>

using station::Outbox;
using station::OutboxState;
using station::ResultRow;
using station::ResultRows;

namespace {

ResultRows call(int number)
{
    return {ResultRow{"call", {{"call", number}}},
            ResultRow{"answer",
                      {{"value", QString("a\"'\\\n槽") + QString(number, 'x')}, {"slot", QJsonValue()}}}};
}

TEST(OutboxTest, LettersComeBackAsTheyWereAndInTheirOrder)
{
    const testsupport::StationFiles files;
    Outbox outbox(files.path("o.sqlite"));
    outbox.add({ResultRow{"run", {{"run", "r"}}}});
    for (int i = 1; i <= 5; ++i)
        outbox.add(call(i));
    EXPECT_EQ(outbox.count().letters, 6);
    EXPECT_EQ(outbox.count().answers, 5);
    const QList<Outbox::Letter> first = outbox.oldest(3);
    ASSERT_EQ(first.size(), 3);
    EXPECT_FALSE(first.at(0).isAnswer);
    EXPECT_TRUE(first.at(1).isAnswer);
    EXPECT_EQ(first.at(1).rows, call(1));
    outbox.removeUpTo(first.constLast().number);
    const QList<Outbox::Letter> rest = outbox.oldest(10);
    ASSERT_EQ(rest.size(), 3);
    EXPECT_EQ(rest.at(0).rows, call(3));
    EXPECT_EQ(rest.at(2).rows, call(5));
}

TEST(OutboxTest, ABatchOfHugeLettersIsSmallAndNeverEmpty)
{
    const testsupport::StationFiles files;
    Outbox outbox(files.path("o.sqlite"));
    for (int i = 0; i < 3; ++i)
        outbox.add(call(5'000'000));
    EXPECT_EQ(outbox.oldest(10).size(), 1);
}

TEST(OutboxTest, KeepsItsIdentityAndItsNumbersThoughAllLettersAreGone)
{
    const testsupport::StationFiles files;
    QString id;
    qint64 number = 0;
    {
        Outbox outbox(files.path("o.sqlite"));
        id = outbox.stationId();
        outbox.add(call(1));
        number = outbox.oldest(1).at(0).number;
        outbox.removeUpTo(number);
    }
    Outbox outbox(files.path("o.sqlite"));
    outbox.add(call(2));
    EXPECT_EQ(outbox.stationId(), id);
    EXPECT_EQ(id.size(), 36);
    EXPECT_GT(outbox.oldest(1).at(0).number, number);
    EXPECT_NE(Outbox(files.path("other.sqlite")).stationId(), id);
}

TEST(OutboxTest, ARefusedLetterIsOutOfTheWayAndComesBackToItsPlace)
{
    const testsupport::StationFiles files;
    Outbox outbox(files.path("o.sqlite"));
    for (int i = 1; i <= 3; ++i)
        outbox.add(call(i));
    const qint64 second = outbox.oldest(3).at(1).number;
    outbox.refuse(second, "the server's words");
    ASSERT_EQ(outbox.oldest(3).size(), 2);
    EXPECT_EQ(outbox.oldest(3).at(1).rows, call(3));
    EXPECT_EQ(outbox.count().letters, 2);
    EXPECT_EQ(testsupport::rowsOfFile(files.path("o.sqlite"),
                                      "SELECT number, why, refused LIKE '20%Z' FROM refused"),
              QStringList{QString::number(second) + "|the server's words|1"});
    outbox.add(call(4));
    EXPECT_EQ(outbox.retryRefused(), 1);
    EXPECT_EQ(outbox.retryRefused(), 0);
    const QList<Outbox::Letter> all = outbox.oldest(10);
    ASSERT_EQ(all.size(), 4);
    for (int i = 1; i <= 4; ++i)
        EXPECT_EQ(all.at(i - 1).rows, call(i));
    EXPECT_TRUE(all.at(1).isAnswer);
}

TEST(OutboxTest, OneOfTheFirstVersionIsTakenOverWithWhatWaitsInIt)
{
    const testsupport::StationFiles files;
    testsupport::runOnFile(files.path("o.sqlite"),
                           {"CREATE TABLE identity (station_id TEXT NOT NULL)",
                            "CREATE TABLE letters (number INTEGER PRIMARY KEY AUTOINCREMENT,"
                            " answers INTEGER NOT NULL, rows TEXT NOT NULL)",
                            "INSERT INTO identity VALUES ('me')",
                            "INSERT INTO letters (answers, rows) VALUES (0, '[{\"kind\":\"run\"}]')",
                            "PRAGMA application_id = 1263948367", "PRAGMA user_version = 1"});
    {
        Outbox outbox(files.path("o.sqlite"));
        EXPECT_EQ(outbox.stationId(), "me");
        EXPECT_EQ(outbox.count().letters, 1);
        outbox.refuse(outbox.oldest(1).at(0).number, "why");
    }
    EXPECT_EQ(Outbox(files.path("o.sqlite")).retryRefused(), 1);
}

TEST(OutboxTest, AFileOfResultsIsNone)
{
    const testsupport::StationFiles files;
    {
        const station::Results results({files.path("r.sqlite"), {}, {}}, false);
    }
    EXPECT_EQ(testsupport::refusalOf([&files] {
                  const station::Results results(
                      {{}, "postgresql://nowhere.invalid/x", files.path("r.sqlite")}, false);
              }),
              "results.outbox: " + files.path("r.sqlite") + ": the file holds something else than an outbox");
}

TEST(OutboxTest, ASecondStationWithItIsRefused)
{
    const testsupport::StationFiles files;
    const station::ResultsTargets targets{{}, "postgresql://%2Fno%2Fserver/x", files.path("o.sqlite")};
    const station::Results first(targets, false);
    EXPECT_EQ(testsupport::refusalOf([&targets] { const station::Results second(targets, false); }),
              "results.outbox: " + files.path("o.sqlite") + ": another station writes to it");
}

TEST(OutboxTest, EachConfigurationHasAnotherOneInTheUsersFolderForState)
{
    const testsupport::StationFiles files;
    qputenv("XDG_STATE_HOME", "/state");
    const QString one = station::usualOutbox(files.write("one.toml", ""));
    EXPECT_TRUE(one.startsWith("/state/interactive-station/outbox-")) << one.toStdString();
    EXPECT_EQ(station::usualOutbox(files.path("./one.toml")), one);
    EXPECT_NE(station::usualOutbox(files.write("two.toml", "")), one);
    qunsetenv("XDG_STATE_HOME");
    EXPECT_TRUE(station::usualOutbox(files.path("one.toml")).contains("/.local/state/interactive-station/"));
}

TEST(OutboxStateTest, TellsWhatWaitsFromAFailureOnUntilAllIsSent)
{
    QStringList told;
    OutboxState state;
    state.setListener(
        [&told](const QString &text, const QString &trouble) { told.append(text + "|" + trouble); });
    state.added(true);
    state.sent(1, 1);
    EXPECT_EQ(told, QStringList{"|"}) << "what is sent at once is nothing to tell";
    told.clear();
    state.added(true);
    EXPECT_TRUE(state.failed("away"));
    EXPECT_FALSE(state.failed("away"));
    state.added(true);
    state.added(false);
    state.sent(1, 1);
    state.sent(1, 1);
    state.sent(1, 0);
    EXPECT_TRUE(state.caughtUp());
    EXPECT_FALSE(state.caughtUp());
    EXPECT_EQ(told, (QStringList{"1 answer waits for the results server|away",
                                 "2 answers wait for the results server|away",
                                 "1 answer waits for the results server|",
                                 "Results wait for the results server|", "|"}));
}

TEST(OutboxStateTest, TellsWhatWasRefusedForAsLongAsTheStationRuns)
{
    OutboxState state;
    QString told;
    QString trouble;
    state.setListener([&](const QString &text, const QString &why) {
        told = text;
        trouble = why;
    });
    state.added(true);
    state.added(false);
    state.refused(false, "no sequence");
    EXPECT_EQ(told, "Results were refused by the results server");
    EXPECT_EQ(trouble, "no sequence");
    state.refused(true, "no such value");
    EXPECT_FALSE(state.caughtUp());
    EXPECT_EQ(told, "1 answer was refused by the results server");
    EXPECT_EQ(trouble, "no such value");
    EXPECT_EQ(state.waiting(), "");
    EXPECT_EQ(state.refusals(), told);
    state.added(true);
    state.failed("away");
    EXPECT_EQ(told, QStringLiteral("1 answer waits for the results server · 1 answer was refused by the "
                                   "results server"));
    EXPECT_EQ(trouble, "away");
    state.sent(1, 1);
    state.caughtUp();
    EXPECT_EQ(trouble, "no such value");
}

TEST(OutboxStateTest, WhatIsFoundAtTheStartIsToldUntilItIsSent)
{
    OutboxState state;
    state.found(14, 12);
    QString told;
    state.setListener([&told](const QString &text, const QString &) { told = text; });
    EXPECT_EQ(told, "12 answers wait for the results server");
}

TEST(OutboxLabelTest, IsSeenWhileResultsWaitAndSaysWhy)
{
    const testsupport::StationFiles files;
    testing::internal::CaptureStdout();
    {
        station::Results results({{}, "postgresql://%2Fno%2Fserver/x", files.path("o.sqlite")}, false);
        station::OutboxLabel label(results);
        results.writeCall({"ask.lua", 3, {}}, {"showView", {}, true, {}});
        EXPECT_TRUE(testsupport::waitUntil([&label] {
            return label.text() == "1 answer waits for the results server" && !label.toolTip().isEmpty();
        }));
        EXPECT_FALSE(label.isHidden());
        EXPECT_FALSE(results.hasFailed());
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "1 answer waits for the results server postgresql://%2Fno%2Fserver/x and will be sent at the "
              "next start\n");
}

TEST(OutboxLabelTest, IsNotSeenWithoutAServer)
{
    station::Results results({}, false);
    const station::OutboxLabel label(results);
    EXPECT_TRUE(label.isHidden());
}

} // namespace
