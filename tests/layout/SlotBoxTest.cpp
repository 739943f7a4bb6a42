#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Font;
using platform::Shadow;
using platform::TextAlignment;
using testsupport::ButtonLook;
using testsupport::InputLook;
using testsupport::inWords;
using testsupport::lookOf;
using testsupport::TextLook;

namespace {

const Dictionary entry{{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}};
const Shadow passShadow{Color::systemBlue(), 2.0, {0.0, 0.0}};

/// The box of a slot panel, the panel of one system.
class SlotBoxTest : public testsupport::PanelFixture
{
protected:
    SlotBoxTest() { station.groups = {"G1", "G2", "G3"}; }

    std::vector<ButtonLook> buttonsOf(const QString &group, int i)
    {
        std::vector<ButtonLook> looks;
        for (const platform::Button *each : buttons(content(group, i)))
            looks.push_back(lookOf(each));
        return looks;
    }
    static ButtonLook button(double x, const QString &title, const QString &identifier)
    {
        return {.frame = {x, 16, 64, 30},
                .title = title,
                .identifier = identifier,
                .font = Font::system(12.8),
                .mask = platform::MinYMargin};
    }
    static ButtonLook pass(const QString &title)
    {
        ButtonLook look = button(134, title, "Pass");
        look.shadow = passShadow;
        return look;
    }
};

TEST_F(SlotBoxTest, ABoxFillsItsTileInTheFaintColourOfItsSystem)
{
    drawSlot(5, entry);
    ASSERT_NE(box("G2", 1), nullptr);
    EXPECT_EQ(inWords(box("G2", 1)->frame()), "(0, 0, 250, 110)");
    EXPECT_EQ(inWords(box("G2", 1)->contentView()->frame()), "(0, 0, 250, 110)");
    EXPECT_EQ(box("G2", 1)->autoresizingMask(), platform::MaxXMargin);
    EXPECT_EQ(box("G2", 1)->fillColor(), Color::white().withAlphaComponent(0.3));
    EXPECT_EQ(box("G2", 1)->shadow(), std::nullopt);
    EXPECT_EQ(tile("G2", 1)->systemIndex().toLongLong(), 5);
    EXPECT_EQ(testsupport::identifierOf(content("G2", 1)), "5");
}

TEST_F(SlotBoxTest, TheBoxTakesTheHostsColourWhenTheStationAsksForIt)
{
    station.customColors = true;
    station.backgrounds = {{5, {0.2, 0.4, 0.6, 0.9}}};
    drawSlot(5, {{"input", Array{"SN"}}, {"backgroundAlpha", 0.5}});
    drawSlot(6, entry);
    EXPECT_EQ(inWords(box("G2", 1)->fillColor()), "rgba(0.2, 0.4, 0.6, 0.5)");
    EXPECT_EQ(inWords(box("G2", 2)->fillColor()), "rgba(1, 1, 1, 0.5)");
}

TEST_F(SlotBoxTest, AShadowIsDrawnWhenTheConfigurationAsksForIt)
{
    drawSlot(5, {{"input", Array{"SN"}}, {"drawShadow", "YES"}});
    EXPECT_EQ(box("G2", 1)->shadow(), (Shadow{Color::systemGray(), 2.0, {0.0, 0.0}}));
    EXPECT_EQ(box("G2", 0)->shadow(), std::nullopt);
}

TEST_F(SlotBoxTest, TheCaptionIsTheSlotsNameWhateverTheTitle)
{
    const Dictionary configs[] = {
        entry, {{"input", Array{"SN"}}, {"title", "Serial number"}}, {{"title", ""}}};
    for (const Dictionary &config : configs) {
        drawSlot(5, config);
        platform::TextField *caption = label(content("G2", 1), "S2");
        ASSERT_NE(caption, nullptr);
        EXPECT_EQ(lookOf(caption), (TextLook{.frame = {4, 70, 230, 20},
                                             .text = "S2",
                                             .font = Font::boldSystem(15),
                                             .alignment = TextAlignment::Center}));
        EXPECT_EQ(label(content("G2", 1), "Serial number"), nullptr);
    }
}

TEST_F(SlotBoxTest, TheGroupIsNamedLeftOfTheCaption)
{
    drawSlot(5, entry);
    platform::TextField *name = label(content("G2", 1), "G2");
    ASSERT_NE(name, nullptr);
    const platform::Rect frame = name->frame();
    EXPECT_EQ(lookOf(name),
              (TextLook{.frame = {4, 70, frame.width(), 20}, .text = "G2", .font = Font::system(11)}));
    EXPECT_GE(frame.width(), 40.0);
    // The caption's text is centred in its frame.
    EXPECT_LT(frame.x() + frame.width(), 119.0 - Font::boldSystem(15).widthOf("S2") / 2.0);
}

TEST_F(SlotBoxTest, TheGroupIsNamedAboveACaptionThatLeavesNoRoom)
{
    const QString slot = "Left chamber, position one";
    station.slotNames[1] = slot;
    drawSlot(5, entry);
    ASSERT_NE(label(content("G2", 1), slot), nullptr);
    ASSERT_NE(label(content("G2", 1), "G2"), nullptr);
    EXPECT_EQ(inWords(label(content("G2", 1), slot)->frame()), "(4, 70, 230, 20)");
    EXPECT_EQ(inWords(label(content("G2", 1), "G2")->frame()), "(4, 90, 230, 20)");
}

TEST_F(SlotBoxTest, AStationOfOneGroupDoesNotNameIt)
{
    station.groups = QStringList{"G1"};
    drawSlot(1, entry);
    EXPECT_EQ(label(content("G1", 1), "G1"), nullptr);
    EXPECT_EQ(labels(content("G1", 1)).size(), 2);
}

TEST_F(SlotBoxTest, NamesThatAreCutShowThemselvesWholeInAToolTip)
{
    const QString slot = "The left chamber of the tester, position one";
    const QString group = "The line on the second floor of the eastern building";
    station.groups[1] = group;
    station.slotNames[1] = slot;
    drawSlot(5, entry);
    for (const QString &name : {slot, group}) {
        ASSERT_NE(label(content(group, 1), name), nullptr) << name.toStdString();
        label(content(group, 1), name)->grab();
        EXPECT_EQ(label(content(group, 1), name)->toolTip(), name);
    }
    EXPECT_EQ(groupButton(group)->toolTip(), group);
    EXPECT_EQ(groupButton("G1")->toolTip(), QString());
}

TEST_F(SlotBoxTest, TheLabelNamesTheFirstInput)
{
    drawSlot(5, {{"input", Array{"MAC", "SN"}}, {"label", "IMEI"}});
    platform::TextField *found = label(content("G2", 1), "MAC:");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(lookOf(found), (TextLook{.frame = {4, 30, 50, 20}, .text = "MAC:", .font = Font::system(13)}));
    // The caption, the group's name and the label.
    EXPECT_EQ(labels(content("G2", 1)).size(), 3);
}

TEST_F(SlotBoxTest, CaptionAndLabelHaveTheHostsTextColourWhenTheBackgroundIsStrongEnough)
{
    const Color yellow{1.0, 1.0, 0.5, 0.9};
    station.customColors = true;
    station.texts = {{5, yellow}};
    const std::pair<double, Color> cases[] = {{0.39, Color::black()}, {0.4, yellow}, {1.0, yellow}};
    for (const auto &[alpha, expected] : cases) {
        drawSlot(5, {{"input", Array{"SN"}}, {"backgroundAlpha", alpha}});
        ASSERT_NE(label(content("G2", 1), "S2"), nullptr);
        ASSERT_NE(label(content("G2", 1), "SN:"), nullptr);
        EXPECT_EQ(label(content("G2", 1), "S2")->textColor(), expected) << alpha;
        EXPECT_EQ(label(content("G2", 1), "SN:")->textColor(), expected) << alpha;
    }
}

TEST_F(SlotBoxTest, TheFieldIsNamedAfterTheFirstInput)
{
    drawSlot(5, {{"input", Array{"MAC", "SN"}}});
    const auto fields = inputs(content("G2", 1));
    ASSERT_EQ(fields.size(), 1);
    EXPECT_EQ(lookOf(fields.first()), (InputLook{.frame = {62, 50, 164, 20},
                                                 .identifier = "5-MAC",
                                                 .parentIdentifier = "5",
                                                 .font = Font::system(12),
                                                 .mask = platform::MinYMargin}));
    EXPECT_EQ(fields.first()->target(), &plugin());
}

TEST_F(SlotBoxTest, OnlyTheLastButtonIsPassAndOnlyItIsHighlighted)
{
    drawSlot(5, entry);
    EXPECT_EQ(buttonsOf("G2", 1), (std::vector{button(38, "Cancel", "5-0-Cancel"), pass("OK")}));
    EXPECT_EQ(buttons(content("G2", 1)).first()->target(), &plugin());
}

TEST_F(SlotBoxTest, AnEntryWithoutConfiguredButtonsHasOk)
{
    drawSlot(5, {{"input", Array{"SN"}}});
    EXPECT_EQ(buttonsOf("G2", 1), std::vector{pass("OK")});
}

TEST_F(SlotBoxTest, AQuestionHasItsButtonsAndNeitherLabelNorField)
{
    drawSlot(0, {{"button", Array{"No", "Maybe", "Yes"}}});
    EXPECT_EQ(buttonsOf("G1", 0),
              (std::vector{button(-58, "No", "0-0-No"), button(38, "Maybe", "0-1-Maybe"), pass("Yes")}));
    EXPECT_TRUE(inputs(content("G1", 0)).isEmpty());
    EXPECT_EQ(labels(content("G1", 0)).size(), 2);
}

TEST_F(SlotBoxTest, ASwitchPanelOfASystemHasPlainCancelAndOk)
{
    drawSlot(5, {{"switch", Array{"A", "B"}}});
    EXPECT_EQ(buttonsOf("G2", 1),
              (std::vector{button(38, "Cancel", "5-0-Cancel"), button(134, "OK", "5-1-OK")}));
    EXPECT_TRUE(inputs(content("G2", 1)).isEmpty());
    EXPECT_EQ(labels(content("G2", 1)).size(), 2);
}

TEST_F(SlotBoxTest, EachSystemFillsTheTileOfItsSlot)
{
    struct Case
    {
        int system;
        QString group;
        int tile;
        QString slot;
    };
    const Case cases[] = {{0, "G1", 0, "S1"}, {3, "G1", 3, "S4"}, {5, "G2", 1, "S2"}, {10, "G3", 2, "S3"}};
    for (const Case &each : cases) {
        drawSlot(each.system, entry);
        EXPECT_NE(label(content(each.group, each.tile), each.slot), nullptr) << each.system;
        EXPECT_EQ(tile(each.group, each.tile)->systemIndex().toLongLong(), each.system);
    }
}

TEST_F(SlotBoxTest, TheOtherBoxesKeepWhatTheyShow)
{
    drawSlot(4, entry);
    platform::View *field = inputs(content("G2", 0)).value(0);
    ASSERT_NE(field, nullptr);
    drawSlot(5, entry);
    EXPECT_EQ(inputs(content("G2", 0)).value(0), field);
    EXPECT_FALSE(box("G2", 0)->isHidden());
    EXPECT_TRUE(content("G2", 2)->subviews().isEmpty());
    EXPECT_TRUE(tile("G2", 2)->systemIndex().isNull());
}

TEST_F(SlotBoxTest, DrawingASystemAgainReplacesWhatItsBoxHeld)
{
    drawSlot(5, entry);
    QPointer<platform::View> former = inputs(content("G2", 1)).value(0);
    ASSERT_NE(former, nullptr);
    drawSlot(5, {{"button", Array{"Yes"}}});
    EXPECT_TRUE(inputs(content("G2", 1)).isEmpty());
    EXPECT_EQ(buttonsOf("G2", 1), std::vector{pass("Yes")});
    EXPECT_EQ(labels(content("G2", 1)).size(), 2);
    letRemovedViewsGo();
    EXPECT_TRUE(former.isNull());
}

TEST_F(SlotBoxTest, AStationOfOneSlotAGroupUsesItsOnlyTile)
{
    station.slotNames = QStringList{"S1"};
    drawSlot(2, entry);
    ASSERT_NE(tile("G3", 0), nullptr);
    EXPECT_EQ(overviewOf("G3")->itemCount(), 1);
    EXPECT_EQ(tile("G3", 0)->systemIndex().toLongLong(), 2);
    EXPECT_NE(field("2-SN"), nullptr);
}

TEST_F(SlotBoxTest, WithOneSlotAGroupTheGivenSystemIsUsedForTheOnlyTile)
{
    station.systemGroups = Array{"G1"};
    station.systemSlots = Array{"S1", "S1", "S1"};
    // The group's tile stands for system 0, and system 2 is beyond the groups.
    rooms().builder.drawUI({entry, Array{"S1"}, {}, {}, subject(0, 2)});
    ASSERT_NE(tile("G1", 0), nullptr);
    EXPECT_EQ(tile("G1", 0)->systemIndex().toLongLong(), 2);
    EXPECT_FALSE(content("G1", 0)->subviews().isEmpty());
}

} // namespace
