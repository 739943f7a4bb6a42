#include "tests/end_to_end/StationRun.h"

#include <QFile>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

constexpr const char *Station = "[station]\ngroups = ['G1']\nslots = ['S1', 'S2']\n";
constexpr const char *Sequence = "[[sequence]]\nscript = 'ask.lua'\n";

/// The station as it is set up for the person at it: sounds, the scanner, the badge.
class Person : public ::testing::Test
{
protected:
    /// A configuration with keys of [station] and further tables.
    void configure(const QString &keys, const QString &tables, const QString &lua)
    {
        station.file("ask.lua", lua);
        station.config(Station + keys + Sequence + tables);
    }

    StationRun station;
};

TEST_F(Person, SoundsNeedNoDevice)
{
    configure("sounds = true\nvolume = 100\n", "",
              R"(return showView(systemIndex, { input = { "SN" }, length = 2, unique = "run" }).SN ~= nil)");
    station.operatorDoes(R"(
        for index = 0, 1 do operator.waitForPanel(tostring(index), 30) end
        operator.scan("A1")
        operator.scan("A1")
        operator.scan("B22")
        operator.scan("B2")
        for index = 0, 1 do operator.click({ panel = tostring(index), title = "OK" }) end
    )");
    station.passes();
    EXPECT_EQ(station.errors(), "");
}

TEST_F(Person, WhatTheScannerSendsAroundATextIsNoPartOfIt)
{
    configure("", "[scanner]\nprefix = \"\\u0002#\"\nsuffix = \"\\u0003\"\nterminator = 'tab'\n",
              R"(return showView(systemIndex, { input = { "SN" }, length = 4 }).SN == "U-0" .. systemIndex)");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.waitForPanel("1", 30)
        operator.click("0-SN")
        operator.scan("U-00")
        operator.scan("U-01")
        for index = 0, 1 do operator.click({ panel = tostring(index), title = "OK" }) end
    )");
    station.passes();
}

TEST_F(Person, WhoGaveAnAnswerStandsBesideIt)
{
    configure(
        "ask_operator = true\nbadge_pattern = 'B[0-9]+'\n", "",
        R"(assert(operatorBadge == "B4711") return showView(systemIndex, { button = { "No", "Yes" } }))");
    station.argument("--badge").argument("B4711").operatorDoes(R"(
        for index = 0, 1 do
            operator.waitForPanel(tostring(index), 30)
            operator.click({ panel = tostring(index), title = "Yes" })
        end
    )");
    station.passes();
    EXPECT_EQ(station.results().first().value("operator"), QJsonValue("B4711"));
    EXPECT_EQ(station.calls("showView", "1").first().value("operator"), QJsonValue("B4711"));
    EXPECT_FALSE(station.end("1").contains("operator"));
}

TEST_F(Person, ABadgeThatNobodyCanGiveIsMissedAtTheStart)
{
    configure("ask_operator = true\n", "", "return operatorBadge == nil");
    station.run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_EQ(station.errorLine(),
              "station: key 'station.ask_operator' asks for a badge, and nobody is there to "
              "give one: --badge TEXT is missing");
}

TEST_F(Person, ABadgeOfAnotherFormIsRefusedAtTheStart)
{
    configure("ask_operator = true\nbadge_pattern = 'B[0-9]+'\n", "", "return true");
    station.argument("--badge").argument("4711").run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_EQ(station.errorLine(),
              "station: --badge: '4711' is no badge: it does not have the form of a badge");
}

TEST_F(Person, NobodyIsNamedWhereNobodyIsAsked)
{
    configure("", "", R"(return operatorBadge == nil and getLoopConfig() ~= nil)");
    station.passes();
    EXPECT_FALSE(station.results().first().contains("operator"));
    EXPECT_FALSE(station.calls("getLoopConfig", "0").first().contains("operator"));
}

} // namespace
