#include "station/record/RecordedLine.h"

#include <gtest/gtest.h>

namespace recorded = station::recorded;
using Kind = station::ClickTarget::Kind;
using Until = station::PanelWait::Until;

namespace {

TEST(RecordedLine, NamesEachFormOfATarget)
{
    EXPECT_EQ(recorded::click({Kind::Identifier, {}, "G1"}), R"(operator.click("G1"))");
    EXPECT_EQ(recorded::click({Kind::Title, "3", "O\"K"}),
              R"(operator.click({ panel = "3", title = "O\"K" }))");
    EXPECT_EQ(recorded::click({Kind::Slot, "G1", "S1"}), R"(operator.click({ panel = "G1", slot = "S1" }))");
    EXPECT_EQ(recorded::click({Kind::Switch, "G1", "S1"}),
              R"(operator.click({ panel = "G1", switch = "S1" }))");
}

TEST(RecordedLine, SaysWhatBecameOfAnEntry)
{
    const station::ClickTarget field{Kind::Identifier, {}, "3-SN"};
    EXPECT_EQ(recorded::enter(field, "a\n"), R"(operator.enter("3-SN", "a\n"))");
    EXPECT_EQ(recorded::confirm(field), R"(operator.enter("3-SN"))");
    EXPECT_EQ(recorded::fill(field, {}), R"(operator.fill("3-SN", ""))");
}

TEST(RecordedLine, WaitsWithALimit)
{
    EXPECT_EQ(recorded::wait({Until::Shown, "3"}, "limit"), R"(operator.waitForPanel("3", limit))");
    EXPECT_EQ(recorded::wait({Until::Gone, "3"}, "limit"), R"(operator.waitForPanelGone("3", limit))");
    EXPECT_EQ(recorded::waitForText("3-StatusLine", "no", "limit"),
              R"(operator.waitForText("3-StatusLine", "no", limit))");
    EXPECT_EQ(recorded::waitForRunEnd("limit"), "operator.waitForRunEnd(limit)");
}

TEST(RecordedLine, GivesTwiceTheTimeWhereAPersonWaitedLong)
{
    EXPECT_EQ(recorded::limit(0.0), "limit");
    EXPECT_EQ(recorded::limit(30.0), "limit");
    EXPECT_EQ(recorded::limit(30.5), "2 * 60");
    EXPECT_EQ(recorded::limit(3600.0), "120 * 60");
}

TEST(RecordedLine, KeepsAStationsNameWithinTheComment)
{
    EXPECT_EQ(recorded::beginning("A\nos.exit()", "2026-01-02").count('\n'), 1);
    EXPECT_EQ(recorded::comment("a\nb"), "-- a b");
}

} // namespace
