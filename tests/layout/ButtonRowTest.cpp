#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Button;
using platform::Dictionary;
using platform::Font;
using testsupport::ButtonLook;
using testsupport::InputLook;
using testsupport::lookOf;

namespace {

constexpr unsigned lowerRight = platform::MinXMargin | platform::MinYMargin;

/// What a group panel has at its lower edge: the shared input field and the row of buttons.
class ButtonRowTest : public testsupport::PanelFixture
{
protected:
    /// The row of the panel, whole.
    std::vector<ButtonLook> row(const QString &group)
    {
        std::vector<ButtonLook> looks;
        for (const Button *each : buttons(pane(group)))
            looks.push_back(lookOf(each));
        return looks;
    }
    static ButtonLook button(double x, const QString &title, const QString &identifier)
    {
        return {.frame = {x, 4, 80, 30},
                .title = title,
                .identifier = identifier,
                .font = Font::system(16),
                .mask = lowerRight};
    }
};

TEST_F(ButtonRowTest, AnInputPanelHasCancelClearAndOk)
{
    drawGroup(0, {{"input", Array{"S1"}}, {"button", Array{"Retry"}}});
    EXPECT_EQ(row("G1"), (std::vector{button(988, "Cancel", "G1-0-Cancel"),
                                      button(1084, "Clear", "G1-1-Clear"), button(1180, "OK", "Pass")}));
}

TEST_F(ButtonRowTest, ASwitchPanelHasCancelAndOkUnderTheirOwnIdentifiers)
{
    drawGroup(1, {{"switch", Array{"S1", "S2"}}, {"button", Array{"Retry"}}});
    EXPECT_EQ(row("G2"), (std::vector{button(1084, "Cancel", "G2-0-Cancel"), button(1180, "OK", "G2-1-OK")}));
}

TEST_F(ButtonRowTest, APanelWithInputsAndSwitchesHasTheButtonsOfASwitchPanel)
{
    drawGroup(0, {{"input", Array{"S1"}}, {"switch", Array{"S2"}}});
    EXPECT_EQ(row("G1"), (std::vector{button(1084, "Cancel", "G1-0-Cancel"), button(1180, "OK", "G1-1-OK")}));
}

TEST_F(ButtonRowTest, SwitchesWithoutASlotToDrawThemForLeaveTheLastButtonPass)
{
    rooms().builder.drawUI({{}, {}, Array{"S1"}, {}, subject(0, {})});
    EXPECT_EQ(row("G1"), (std::vector{button(1084, "Cancel", "G1-0-Cancel"), button(1180, "OK", "Pass")}));
}

TEST_F(ButtonRowTest, AQuestionHasTheConfiguredButtons)
{
    drawGroup(0, {{"button", Array{"Left", "Right", "Both", "None"}}});
    EXPECT_EQ(row("G1"), (std::vector{button(892, "Left", "G1-0-Left"), button(988, "Right", "G1-1-Right"),
                                      button(1084, "Both", "G1-2-Both"), button(1180, "None", "Pass")}));
}

TEST_F(ButtonRowTest, APanelThatAsksForNothingHasOk)
{
    drawGroup(0, {});
    EXPECT_EQ(row("G1"), (std::vector{button(1180, "OK", "Pass")}));
}

TEST_F(ButtonRowTest, TheRowStandsAtTheRightOfAPanelWiderThanTheWindow)
{
    station.windowSize = {600, 800};
    drawGroup(0, {{"column", 4}});
    EXPECT_EQ(row("G1"), (std::vector{button(900, "OK", "Pass")}));
}

TEST_F(ButtonRowTest, TheButtonsTellTheController)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    ASSERT_EQ(buttons(pane("G1")).size(), 3);
    for (const Button *each : buttons(pane("G1")))
        EXPECT_EQ(each->target(), &plugin());
    ASSERT_NE(field("G1-SharedInput"), nullptr);
    EXPECT_EQ(field("G1-SharedInput")->target(), &plugin());
}

TEST_F(ButtonRowTest, AnInputPanelHasTheSharedField)
{
    drawGroup(1, {{"input", Array{"S1", "S3"}}, {"column", 2}});
    const auto fields = inputs(pane("G2"));
    ASSERT_EQ(fields.size(), 1);
    EXPECT_EQ(lookOf(fields.first()), (InputLook{.frame = {8, 8, 375, 25},
                                                 .identifier = "G2-SharedInput",
                                                 .parentIdentifier = "G2",
                                                 .font = Font::system(14.4),
                                                 .mask = platform::MinYMargin}));
}

TEST_F(ButtonRowTest, OnlyInputsWithoutSwitchesHaveTheSharedField)
{
    const Dictionary others[] = {{},
                                 {{"switch", Array{"S1"}}},
                                 {{"input", Array{"S1"}}, {"switch", Array{"S1"}}},
                                 {{"button", Array{"No"}}}};
    for (const Dictionary &config : others) {
        drawGroup(0, config);
        EXPECT_TRUE(inputs(pane("G1")).isEmpty()) << platform::description(config).toStdString();
    }
}

} // namespace
