#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Button;
using platform::Color;
using platform::Dictionary;
using platform::Font;
using platform::TextAlignment;
using testsupport::ButtonLook;
using testsupport::InputLook;
using testsupport::inWords;
using testsupport::lookOf;
using testsupport::TextLook;

namespace {

const Color faintWhite = Color::white().withAlphaComponent(0.6);

/// The boxes of a group panel: one for each slot of the group.
class GroupBoxTest : public testsupport::PanelFixture
{
protected:
    GroupBoxTest() { station.groups = {"G1", "G2", "G3"}; }

    static TextLook caption(const platform::Rect &frame, const QString &slot)
    {
        return {
            .frame = frame, .text = slot, .font = Font::boldSystem(15), .alignment = TextAlignment::Center};
    }
    static ButtonLook slotSwitch(const platform::Rect &frame, const QString &identifier)
    {
        return {.frame = frame,
                .title = "",
                .identifier = identifier,
                .font = Button().font(),
                .action = "switchBtnClicked:",
                .type = Button::Type::Switch,
                .state = Button::On};
    }
    QList<bool> shown(const QString &group)
    {
        QList<bool> boxes;
        for (int i = 0; i < 4; ++i)
            boxes.append(box(group, i) && !box(group, i)->isHidden());
        return boxes;
    }
};

TEST_F(GroupBoxTest, EveryBoxFillsItsTileInTheFaintColourOfItsSystem)
{
    station.customColors = true;
    station.backgrounds = {{8, {0.2, 0.4, 0.6, 1.0}}, {11, {0.1, 0.0, 0.3, 0.5}}};
    drawGroup(2, {{"input", Array{"S1", "S4"}}});
    const QString fills[] = {"rgba(0.2, 0.4, 0.6, 0.3)", "rgba(1, 1, 1, 0.3)", "rgba(1, 1, 1, 0.3)",
                             "rgba(0.1, 0, 0.3, 0.3)"};
    for (int i = 0; i < 4; ++i) {
        ASSERT_NE(box("G3", i), nullptr);
        EXPECT_EQ(inWords(box("G3", i)->frame()), "(0, 0, 250, 64)");
        EXPECT_EQ(box("G3", i)->autoresizingMask(), platform::MaxXMargin);
        EXPECT_EQ(inWords(box("G3", i)->fillColor()), fills[i]);
        EXPECT_EQ(tile("G3", i)->systemIndex().toLongLong(), 8 + i);
    }
}

TEST_F(GroupBoxTest, OnlySlotsThatTakePartAreShown)
{
    struct Case
    {
        Array inputs;
        QList<bool> expected;
    };
    const Case cases[] = {{{"S1", "S2", "S3", "S4"}, {true, true, true, true}},
                          {{"S3", "S1"}, {true, false, true, false}},
                          {{"S4"}, {false, false, false, true}},
                          {{}, {false, false, false, false}}};
    for (const Case &each : cases) {
        drawGroup(1, {{"input", each.inputs}});
        EXPECT_EQ(shown("G2"), each.expected) << platform::description(each.inputs).toStdString();
    }
}

TEST_F(GroupBoxTest, ASlotThatTakesNoPartHasItsFieldAndSwitchAllTheSame)
{
    drawGroup(1, {{"input", Array{"S1"}}});
    ASSERT_NE(content("G2", 2), nullptr);
    EXPECT_TRUE(box("G2", 2)->isHidden());
    ASSERT_EQ(inputs(content("G2", 2)).size(), 1);
    EXPECT_EQ(testsupport::identifierOf(inputs(content("G2", 2)).first()), "G2-S3");
    EXPECT_EQ(identifiers(buttons(content("G2", 2))), QStringList{"G2-106-S3"});
}

TEST_F(GroupBoxTest, TheDisplayFieldShowsASlotsValueAndTakesNone)
{
    drawGroup(1, {{"input", Array{"S1", "S2", "S3", "S4"}}});
    for (int i = 0; i < 4; ++i) {
        const auto fields = inputs(content("G2", i));
        ASSERT_EQ(fields.size(), 1);
        EXPECT_EQ(lookOf(fields.first()), (InputLook{.frame = {54, 2, 146, 25},
                                                     .identifier = "G2-S" + QString::number(i + 1),
                                                     .parentIdentifier = "G2",
                                                     .font = Font::system(12),
                                                     .background = faintWhite,
                                                     .bordered = false,
                                                     .editable = false,
                                                     .action = ""}));
        EXPECT_EQ(fields.first()->tag(), 104 + i);
        EXPECT_EQ(fields.first()->systemIndex().toLongLong(), 4 + i);
    }
}

TEST_F(GroupBoxTest, TheDisplayFieldIsTwiceAsOpaqueAsTheBox)
{
    drawGroup(0, {{"input", Array{"S1"}}, {"backgroundAlpha", 0.25}});
    ASSERT_EQ(inputs(content("G1", 0)).size(), 1);
    EXPECT_EQ(box("G1", 0)->fillColor(), Color::white().withAlphaComponent(0.25));
    EXPECT_EQ(inputs(content("G1", 0)).first()->backgroundColor(), Color::white().withAlphaComponent(0.5));
}

TEST_F(GroupBoxTest, TheCaptionMakesRoomForTheSwitch)
{
    drawGroup(1, {{"input", Array{"S1"}}});
    platform::TextField *found = label(content("G2", 0), "S1");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(lookOf(found), caption({81, 24, 50, 20}, "S1"));
    ASSERT_EQ(buttons(content("G2", 0)).size(), 1);
    EXPECT_EQ(lookOf(buttons(content("G2", 0)).first()), slotSwitch({139, 20, 30, 30}, "G2-104-S1"));
    EXPECT_EQ(buttons(content("G2", 0)).first()->target(), &plugin());
}

TEST_F(GroupBoxTest, CaptionAndSwitchOfASwitchPanelStandLower)
{
    drawGroup(1, {{"switch", Array{"S1", "S2"}}});
    platform::TextField *found = label(content("G2", 1), "S2");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(lookOf(found), caption({81, 11.5, 50, 20}, "S2"));
    ASSERT_EQ(buttons(content("G2", 1)).size(), 1);
    EXPECT_EQ(lookOf(buttons(content("G2", 1)).first()), slotSwitch({139, 7.5, 30, 30}, "G2-105-S2"));
}

TEST_F(GroupBoxTest, ASwitchPanelHasNoFieldsAndNoLabels)
{
    const Dictionary configs[] = {{{"switch", Array{"S1", "S2"}}},
                                  {{"input", Array{"S1"}}, {"switch", Array{"S1"}}}};
    for (const Dictionary &config : configs) {
        drawGroup(1, config);
        for (int i = 0; i < 4; ++i) {
            EXPECT_TRUE(inputs(content("G2", i)).isEmpty());
            EXPECT_EQ(labels(content("G2", i)).size(), 1);
        }
        EXPECT_EQ(fieldsInLog(), "{G2 = ()}");
    }
}

TEST_F(GroupBoxTest, ASwitchPanelShowsTheSlotsThatItSwitches)
{
    drawGroup(1, {{"switch", Array{"S2", "S3"}}});
    EXPECT_EQ(shown("G2"), (QList<bool>{false, true, true, false}));
}

TEST_F(GroupBoxTest, TheLabelNamesWhatIsAskedFor)
{
    const std::pair<Dictionary, QString> cases[] = {{{{"input", Array{"S1"}}}, "SN:"},
                                                    {{{"input", Array{"S1"}}, {"label", ""}}, "SN:"},
                                                    {{{"input", Array{"S1"}}, {"label", "MAC"}}, "MAC:"}};
    for (const auto &[config, expected] : cases) {
        drawGroup(0, config);
        for (int i = 0; i < 4; ++i) {
            platform::TextField *found = label(content("G1", i), expected);
            ASSERT_NE(found, nullptr) << expected.toStdString();
            EXPECT_EQ(lookOf(found),
                      (TextLook{.frame = {4, 0, 50, 25}, .text = expected, .font = Font::system(13)}));
        }
    }
}

TEST_F(GroupBoxTest, ASlotsControlsCarryTheTagOfItsSystem)
{
    drawGroup(2, {{"input", Array{"S1"}}});
    for (int i = 0; i < 4; ++i) {
        ASSERT_EQ(buttons(content("G3", i)).size(), 1);
        EXPECT_EQ(buttons(content("G3", i)).first()->tag(), 108 + i);
        EXPECT_EQ(content("G3", i)->viewWithTag(108 + i), inputs(content("G3", i)).value(0));
    }
}

TEST_F(GroupBoxTest, CaptionAndLabelHaveTheHostsTextColour)
{
    const Color yellow{1.0, 1.0, 0.5, 1.0};
    station.customColors = true;
    station.texts = {{4, yellow}};
    drawGroup(1, {{"input", Array{"S1"}}, {"backgroundAlpha", 0.5}});
    ASSERT_NE(label(content("G2", 0), "S1"), nullptr);
    EXPECT_EQ(label(content("G2", 0), "S1")->textColor(), yellow);
    EXPECT_EQ(label(content("G2", 0), "SN:")->textColor(), yellow);
    EXPECT_EQ(label(content("G2", 1), "SN:")->textColor(), Color::black());
}

TEST_F(GroupBoxTest, AQuestionToAGroupDrawsFieldsWithoutLabels)
{
    drawGroup(0, {{"button", Array{"No", "Yes"}}});
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(inputs(content("G1", i)).size(), 1);
        EXPECT_EQ(labels(content("G1", i)).size(), 1);
    }
}

TEST_F(GroupBoxTest, TheContentOfAGroupsBoxesHasNoIdentifierOfItsOwn)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    ASSERT_NE(content("G1", 0), nullptr);
    EXPECT_TRUE(content("G1", 0)->identifier().isNull());
}

TEST_F(GroupBoxTest, EveryBoxHasAShadowWhenTheConfigurationAsksForIt)
{
    drawGroup(0, {{"input", Array{"S1"}}, {"drawShadow", 1}});
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(box("G1", i)->shadow(), (platform::Shadow{Color::systemGray(), 2.0, {0.0, 0.0}}));
}

} // namespace
