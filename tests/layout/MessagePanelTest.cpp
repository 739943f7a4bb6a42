#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Font;
using platform::Rect;
using platform::TextAlignment;
using testsupport::lookOf;
using testsupport::TextLook;

namespace {

constexpr Color brown{119.0 / 255.0, 51.0 / 255.0, 0.0, 1.0};

/// An informative message on a group panel, and a message in a slot's box.
class MessagePanelTest : public testsupport::PanelFixture
{
protected:
    TextLook groupMessage(const Dictionary &config)
    {
        drawGroup(0, config);
        platform::TextField *found = label(pane("G1"), config.value("message").toString());
        return found ? lookOf(found) : TextLook{};
    }
};

TEST_F(MessagePanelTest, AMessageFillsThePanelInBlackCentredText)
{
    EXPECT_EQ(groupMessage({{"message", "Load the units"}}), (TextLook{.frame = {16, 16, 1260, 78},
                                                                       .text = "Load the units",
                                                                       .font = Font::system(15),
                                                                       .alignment = TextAlignment::Center}));
}

TEST_F(MessagePanelTest, FontColourAndAlignmentComeFromTheConfiguration)
{
    EXPECT_EQ(groupMessage({{"message", "Careful"},
                            {"messageFont", 30},
                            {"messageColor", "Brown"},
                            {"messageAlignment", "1"}}),
              (TextLook{.frame = {16, 16, 1260, 78},
                        .text = "Careful",
                        .font = Font::system(30),
                        .textColor = brown,
                        .alignment = TextAlignment::Right}));
}

TEST_F(MessagePanelTest, AColourThatHasNoNameIsBlack)
{
    EXPECT_EQ(groupMessage({{"message", "Careful"}, {"messageColor", "grey"}}).textColor, Color::black());
}

TEST_F(MessagePanelTest, AlignmentsOutOfRangeAreCentred)
{
    const std::pair<const char *, TextAlignment> cases[] = {{"0", TextAlignment::Left},
                                                            {"7", TextAlignment::Center},
                                                            {"-1", TextAlignment::Center},
                                                            {"", TextAlignment::Center},
                                                            {"3", TextAlignment::Justified}};
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(groupMessage({{"message", "Careful"}, {"messageAlignment", text}}).alignment, expected)
            << text;
}

TEST_F(MessagePanelTest, AMessageIsAsWideAsItsColumnsInANarrowWindow)
{
    station.windowSize = {600, 800};
    EXPECT_EQ(testsupport::inWords(groupMessage({{"message", "Load"}, {"column", 4}}).frame),
              "(16, 16, 980, 78)");
}

TEST_F(MessagePanelTest, AMessagePanelHasNoOverviewAndNoButtons)
{
    drawGroup(1, {{"message", "Load the units"}, {"button", Array{"Yes"}}});
    ASSERT_NE(pane("G2"), nullptr);
    EXPECT_EQ(overviewOf("G2"), nullptr);
    EXPECT_TRUE(buttons(pane("G2")).isEmpty());
    EXPECT_TRUE(inputs(pane("G2")).isEmpty());
    // The header, the line and the message.
    EXPECT_EQ(pane("G2")->subviews().size(), 3);
}

TEST_F(MessagePanelTest, AMessagePanelWithInputsStillHasTheSharedField)
{
    drawGroup(0, {{"message", "Load the units"}, {"input", Array{"S1"}}});
    ASSERT_EQ(inputs(pane("G1")).size(), 1);
    EXPECT_EQ(testsupport::identifierOf(inputs(pane("G1")).first()), "G1-SharedInput");
    EXPECT_TRUE(buttons(pane("G1")).isEmpty());
    EXPECT_NE(label(pane("G1"), "Load the units"), nullptr);
}

TEST_F(MessagePanelTest, AMessagePanelWithInputsAndSwitchesHasNoField)
{
    drawGroup(0, {{"message", "Load the units"}, {"input", Array{"S1"}}, {"switch", Array{"S1"}}});
    ASSERT_NE(pane("G1"), nullptr);
    EXPECT_TRUE(inputs(pane("G1")).isEmpty());
    EXPECT_TRUE(buttons(pane("G1")).isEmpty());
}

TEST_F(MessagePanelTest, AMessageTakesThePlaceOfTheGroupsFormerPanel)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    drawGroup(0, {{"message", "Done"}});
    EXPECT_EQ(panes(), QStringList{"G1"});
    EXPECT_EQ(field("G1-SharedInput"), nullptr);
    EXPECT_EQ(overviewOf("G1"), nullptr);
}

TEST_F(MessagePanelTest, AMessagePanelFillsTheBoxesOfAnOverviewThatStandsThereAlready)
{
    drawSlot(1, {{"input", Array{"SN"}}});
    // A panel for a group that is kept under a system's key leaves the group's overview alone.
    rooms().builder.drawUI({{{"message", "Load"}}, Array{"S2"}, {}, {}, subject(0, 1)});
    ASSERT_NE(content("G1", 1), nullptr);
    ASSERT_EQ(inputs(content("G1", 1)).size(), 1);
    EXPECT_EQ(testsupport::identifierOf(inputs(content("G1", 1)).first()), "1-S2");
}

TEST_F(MessagePanelTest, AQuestionToOneSystemShowsItsMessageInTheBox)
{
    drawSlot(5, {{"message", "Is it lit?"}, {"button", Array{"No", "Yes"}}});
    ASSERT_NE(content("G2", 1), nullptr);
    platform::TextField *found = label(content("G2", 1), "Is it lit?");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(lookOf(found), (TextLook{.frame = {4, 30, 230, 40},
                                       .text = "Is it lit?",
                                       .font = Font::system(15),
                                       .alignment = TextAlignment::Center}));
    EXPECT_TRUE(inputs(content("G2", 1)).isEmpty());
}

TEST_F(MessagePanelTest, TheMessageInABoxIsStyledByTheConfiguration)
{
    drawSlot(5, {{"message", "Is it lit?"},
                 {"messageFont", "20"},
                 {"messageColor", "brown"},
                 {"messageAlignment", 0}});
    platform::TextField *found = label(content("G2", 1), "Is it lit?");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(lookOf(found), (TextLook{.frame = {4, 30, 230, 40},
                                       .text = "Is it lit?",
                                       .font = Font::system(20),
                                       .textColor = brown,
                                       .alignment = TextAlignment::Left}));
}

TEST_F(MessagePanelTest, TheMessageInABoxHasTheSlotsColourWhenItNamesNone)
{
    station.customColors = true;
    station.texts = {{5, brown}};
    drawSlot(5, {{"message", "Is it lit?"}, {"backgroundAlpha", 0.5}});
    platform::TextField *found = label(content("G2", 1), "Is it lit?");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->textColor(), brown);
}

TEST_F(MessagePanelTest, ASystemThatIsAskedForInputIsShownNoMessage)
{
    drawSlot(5, {{"message", "Scan it"}, {"input", Array{"SN"}}});
    ASSERT_NE(content("G2", 1), nullptr);
    EXPECT_EQ(label(content("G2", 1), "Scan it"), nullptr);
}

TEST_F(MessagePanelTest, ASystemThatIsAskedForSwitchesIsShownNoMessage)
{
    drawSlot(5, {{"message", "Choose"}, {"switch", Array{"door", "lamp"}}});
    ASSERT_NE(content("G2", 1), nullptr);
    EXPECT_EQ(label(content("G2", 1), "Choose"), nullptr);
}

} // namespace
