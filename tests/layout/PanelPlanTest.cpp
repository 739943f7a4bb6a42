#include "layout/PanelPlan.h"

#include <gtest/gtest.h>

using interactive::PanelKind;
using interactive::PanelPlan;
using platform::Array;
using platform::Dictionary;
using platform::TextAlignment;
using platform::Value;

namespace plan = interactive::plan;

namespace {

TEST(PanelPlanTest, TheConfiguredTitleIsTheTitle)
{
    EXPECT_EQ(plan::title({{"title", "Scan"}}, "G1", "S2"), "Scan");
}

TEST(PanelPlanTest, AGroupPanelWithoutATitleIsCalledLikeItsGroup)
{
    EXPECT_EQ(plan::title({}, "G1", Value()), "G1");
    EXPECT_EQ(plan::title({{"title", ""}}, "G1", Value()), "G1");
}

TEST(PanelPlanTest, ASlotPanelWithoutATitleIsCalledLikeItsGroupAndSlot)
{
    EXPECT_EQ(plan::title({}, "G1", "S2"), "G1: S2");
    EXPECT_EQ(plan::title({{"title", ""}}, "G1", "S2"), "G1: S2");
}

TEST(PanelPlanTest, ColumnsComeFromTheConfigurationThenFromTheLastPanelThenFromTheSlots)
{
    struct Case
    {
        Dictionary config;
        quint64 current;
        quint64 expected;
    };
    const Case cases[] = {
        {{{"column", 3}}, 2, 3},
        {{{"column", "3"}}, 2, 3},
        {{{"column", " 3 wide"}}, 2, 3},
        {{{"column", 0}}, 2, 2},
        {{{"column", "none"}}, 2, 2},
        {{{"column", ""}}, 2, 2},
        {{}, 2, 2},
        {{}, 0, 4},
        {{{"column", 0}}, 0, 4},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(plan::columns(each.config, each.current, 4), each.expected)
            << platform::description(each.config).toStdString() << " after " << each.current;
    }
}

TEST(PanelPlanTest, AMessageIsFifteenPointsHighUnlessTheConfigurationSaysOtherwise)
{
    EXPECT_EQ(plan::messageFontSize({}), 15.0);
    EXPECT_EQ(plan::messageFontSize({{"messageFont", 0}}), 15.0);
    EXPECT_EQ(plan::messageFontSize({{"messageFont", "big"}}), 15.0);
    EXPECT_EQ(plan::messageFontSize({{"messageFont", ""}}), 15.0);
    EXPECT_EQ(plan::messageFontSize({{"messageFont", 24}}), 24.0);
    EXPECT_EQ(plan::messageFontSize({{"messageFont", "18pt"}}), 18.0);
}

TEST(PanelPlanTest, AMessageIsCentredUnlessAnAlignmentOfZeroToFourIsGiven)
{
    const std::pair<Value, TextAlignment> cases[] = {
        {"0", TextAlignment::Left},      {"1", TextAlignment::Right},   {"2", TextAlignment::Center},
        {"3", TextAlignment::Justified}, {"4", TextAlignment::Natural}, {0, TextAlignment::Left},
        {4.0, TextAlignment::Natural},   {"5", TextAlignment::Center},  {"7", TextAlignment::Center},
        {"-1", TextAlignment::Center},   {"", TextAlignment::Center},   {"left", TextAlignment::Left},
    };
    for (const auto &[value, expected] : cases) {
        EXPECT_EQ(plan::messageAlignment({{"messageAlignment", value}}), expected)
            << '\'' << platform::description(value).toStdString() << '\'';
    }
    EXPECT_EQ(plan::messageAlignment({}), TextAlignment::Center);
}

TEST(PanelPlanTest, ButtonsFollowTheKindOfPanelAndWhatItAsksFor)
{
    struct Case
    {
        Value configured;
        PanelKind kind;
        bool inputs;
        bool switches;
        QStringList expected;
    };
    const Array own{"Retry", "Skip"};
    const QStringList cancelOk{"Cancel", "OK"};
    const Case cases[] = {
        {own, PanelKind::Group, true, false, {"Cancel", "Clear", "OK"}},
        {own, PanelKind::Group, true, true, cancelOk},
        {own, PanelKind::Group, false, true, cancelOk},
        {own, PanelKind::Group, false, false, {"Retry", "Skip"}},
        {Value(), PanelKind::Group, false, false, {"OK"}},
        {Array{}, PanelKind::Group, false, false, {"OK"}},
        {own, PanelKind::Slot, true, false, {"Retry", "Skip"}},
        {own, PanelKind::Slot, true, true, cancelOk},
        {own, PanelKind::Slot, false, true, cancelOk},
        {own, PanelKind::Slot, false, false, {"Retry", "Skip"}},
        {Value(), PanelKind::Slot, true, false, {"OK"}},
        {Value(), PanelKind::Slot, false, false, {"OK"}},
        {Array{}, PanelKind::Slot, true, false, {"OK"}},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(plan::buttonTitles(each.configured, each.kind, each.inputs, each.switches), each.expected)
            << platform::description(each.configured).toStdString() << (each.inputs ? " inputs" : "")
            << (each.switches ? " switches" : "");
    }
}

TEST(PanelPlanTest, TheLastButtonIsPassUnlessThePanelHasBothInputsAndSwitches)
{
    struct Case
    {
        Array inputs;
        qsizetype switches;
        QString first;
        QString last;
    };
    const Case cases[] = {
        {{}, 0, "G1-0-No", "Pass"},
        {{"S1"}, 0, "G1-0-No", "Pass"},
        {{}, 1, "G1-0-No", "Pass"},
        {{"S1"}, 1, "G1-0-No", "G1-1-Yes"},
    };
    for (const Case &each : cases) {
        PanelPlan panel;
        panel.subject.panelKey = platform::Identifier("G1");
        panel.inputs = each.inputs;
        panel.switchCount = each.switches;
        panel.buttons = {"No", "Yes"};
        EXPECT_EQ(plan::buttonIdentifier(panel, 0).text(), each.first);
        EXPECT_EQ(plan::buttonIdentifier(panel, 1).text(), each.last);
    }
}

} // namespace
