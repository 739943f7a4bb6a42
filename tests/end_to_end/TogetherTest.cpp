#include "tests/end_to_end/StationRun.h"
#include "tests/support/Wait.h"

#include <QFile>

#include <gtest/gtest.h>

#include <csignal>

using testsupport::StationRun;

namespace {

/// What the functions of a run do for the sequences of a station.
TEST(Together, SystemsMeetInTheirGroupAndTheStationsSequenceMeetsAll)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames({"S1", "S2"});
    station.perSystem(R"(
        if systemIndex > 1 then return true end
        shared.update("there", function(n) return (n or 0) + 1 end)
        return rendezvous("start") and shared.there == 2
    )");
    station.perStation(R"(
        assert(rendezvous("start"))
        return shared.there == 2
    )");
    station.passes();
    EXPECT_TRUE(station.log().contains("rendezvous \"start\": system 2 has ended and is not waited for"));
}

TEST(Together, WhoIsMissingIsNamedWithTheScriptWhereASystemHasSeveral)
{
    StationRun station;
    station.slotNames({"S1", "S2"});
    station.perSystem("if systemIndex == 1 then while not shared.looked do sleep(0.01) end return true end "
                      "shared.missing = select(2, rendezvous('start', 0)) shared.looked = true");
    station.perGroup(
        "while not shared.looked do sleep(0.01) end return shared.missing == 'system 1, group G1'");
    station.passes();
    StationRun several;
    several.slotNames({"S1"}).perSystem(
        "shared.missing = select(2, rendezvous('start', 0)) shared.looked = true");
    several.perSystem("while not shared.looked do sleep(0.01) end log('missing: ' .. shared.missing)");
    several.passes();
    EXPECT_TRUE(several.log().contains("missing: system 0 (")) << several.everything().toStdString();
}

TEST(Together, ARowShowsWhatItsSequenceWaitsFor)
{
    StationRun station;
    station.argument("--plugin").argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libTellsStatus.so"));
    station.slotNames({"S1", "S2"}).perSystem(R"(
        local function untilTheOtherShows(text)
            repeat local shown = rows()[2] sleep(0.005) until shown == text
        end
        if systemIndex == 1 then
            assert(rendezvous("start"))
            return locked("meter", function() return true end)
        end
        untilTheOtherShows('Waiting: others at "start"')
        locked("meter", function()
            assert(rendezvous("start"))
            untilTheOtherShows('Waiting: lock "meter"')
        end)
        untilTheOtherShows("Passed")
    )");
    station.passes();
}

TEST(Together, WhoeverWaitsForOneThatWaitsForAnOperatorWhoIsNotThereIsStoppedWithIt)
{
    StationRun station;
    station.slotNames({"S1", "S2", "S3"}).perSystem(R"(
        if systemIndex == 2 then return rendezvous("end") end
        locked("fixture", function() showView(systemIndex, { button = { "No", "Yes" } }) end)
        rendezvous("end")
    )");
    station.run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_TRUE(station.errorLine().startsWith(
        "station: operator: there is none (--operator FILE), but an answer is waited for by system 0"));
    for (int system = 0; system < 3; ++system)
        EXPECT_EQ(station.outcome(system), "stopped");
}

TEST(Together, AStopEndsAllWaitsAtOnce)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames({"S1", "S2", "S3", "S4"});
    // The last one of each group never comes; the others wait for it or for the lock that one of them has.
    station.perSystem(QStringLiteral(R"(
        shared.update("there", function(n) return (n or 0) + 1 end)
        if slotName == "S4" then
            if groupName == "G1" then
                while shared.there < 8 do sleep(0.001) end
                io.open("%1", "w"):close()
            end
            while true do sleep(1000) end
        end
        if slotName == "S1" then return rendezvous("never", 100000) end
        locked("meter", function() rendezvous("never", 100000) end)
    )")
                          .arg(station.path("sign")));
    station.start();
    ASSERT_TRUE(testsupport::waitUntil([&] { return QFile::exists(station.path("sign")); }))
        << station.everything().toStdString();
    EXPECT_EQ(::kill(static_cast<pid_t>(station.process().processId()), SIGTERM), 0);
    station.finish();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errors(), "");
    for (int system = 0; system < 8; ++system)
        EXPECT_EQ(station.outcome(system), "stopped");
}

TEST(Together, AnOperatorsScriptHasNothingOfIt)
{
    StationRun station;
    station.perSystem("return true")
        .operatorDoes(
            "expect(rendezvous == nil and locked == nil and shared == nil, 'sequences alone have them')");
    station.passes();
}

TEST(Together, APluginCannotGiveWhatTheSequencerGives)
{
    for (const auto &[name, what] : {std::pair{"GivesShared", "function \"shared\""},
                                     std::pair{"ConstantLocked", "constant \"locked\""}}) {
        StationRun station;
        const QString path = QStringLiteral(FIXTURE_PLUGINS_PATH "/lib%1.so").arg(QLatin1String(name));
        station.perSystem("return true").argument("--plugin").argument(path).run();
        EXPECT_EQ(station.status(), 2);
        EXPECT_EQ(station.errorLine(),
                  QStringLiteral("station: plug-in %1: %2: the sequencer gives it already")
                      .arg(path, QLatin1String(what)));
    }
}

} // namespace
