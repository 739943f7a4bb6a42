#include "platform/Box.h"
#include "platform/Button.h"
#include "tests/support/PanelFixture.h"

using interactive::MouseTrackedTextField;
using platform::Array;
using platform::Button;
using platform::Color;
using platform::Dictionary;
using platform::Identifier;
using platform::Value;

namespace {

const Array allSlots{"S1", "S2", "S3", "S4"};

/// What a click on a slot's switch does.
class SwitchTest : public testsupport::PanelFixture
{
protected:
    SwitchTest()
    {
        station.customColors = true;
        for (int system = 0; system < 8; ++system)
            station.backgrounds.insert(system, {0.1 * system, 0.5, 0.25, 1.0});
    }

    Button *slotSwitch(const QString &group, int slot) { return buttons(content(group, slot)).value(0); }
    MouseTrackedTextField *slotField(const QString &group, int slot)
    {
        return inputs(content(group, slot)).value(0);
    }
    QString statusText(const QString &key) { return platform::description(status(key)); }
    /// A switch made by hand in a box, as the panel builder would have made it.
    Button *handMade(platform::Box &around, const QString &identifier, platform::View *tagged,
                     Button::State state)
    {
        auto *button = new Button(around.contentView());
        button->setButtonType(Button::Type::Switch);
        button->setIdentifier(Identifier(identifier));
        button->setState(state);
        if (tagged)
            around.contentView()->addSubview(tagged);
        return button;
    }
};

TEST_F(SwitchTest, OffTakesTheSlotOutAndEmptiesItsField)
{
    drawGroup(1, {{"input", allSlots}});
    slotField("G2", 2)->setStringValue("4711");
    click(slotSwitch("G2", 2));
    EXPECT_EQ(slotSwitch("G2", 2)->state(), Button::Off);
    EXPECT_EQ(statusText("G2"), "{S1 = 1; S2 = 1; S4 = 1}");
    EXPECT_FALSE(slotField("G2", 2)->isEnabled());
    EXPECT_EQ(slotField("G2", 2)->stringValue(), "");
    EXPECT_EQ(box("G2", 2)->fillColor(), Color::windowBackground());
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default,
                   "-[InteractiveView switchBtnClicked:]: enable status: {G1 = {S1 = 1; S2 = 1; S3 = 1; "
                   "S4 = 1}; G2 = {S1 = 1; S2 = 1; S4 = 1}}"));
}

TEST_F(SwitchTest, OnPutsItBackInItsColourButNotWhatWasEntered)
{
    drawGroup(1, {{"input", allSlots}});
    click(slotSwitch("G2", 2));
    slotField("G2", 2)->setStringValue("4711");
    click(slotSwitch("G2", 2));
    EXPECT_EQ(statusText("G2"), "{S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
    EXPECT_EQ(status("G2").value("S3"), Value(true));
    EXPECT_TRUE(slotField("G2", 2)->isEnabled());
    EXPECT_EQ(slotField("G2", 2)->stringValue(), "");
    EXPECT_EQ(box("G2", 2)->fillColor(), plugin().bgColor(6).withAlphaComponent(plugin().backgroundAlpha()));
}

TEST_F(SwitchTest, ForgetsWhatWasEnteredInBothDirectionsAndNothingElse)
{
    drawGroup(0, {{"input", allSlots}});
    const Dictionary record{{"S1", "a"}, {"S2", "b"}, {"length", 1}};
    const Dictionary other{{"S2", "c"}};
    plugin().setSavedData({{"G1", record}, {"G2", other}});
    click(slotSwitch("G1", 1));
    EXPECT_EQ(platform::description(plugin().savedData()), "{G1 = {S1 = a; length = 1}; G2 = {S2 = c}}");
    plugin().setSavedData({{"G1", record}, {"G2", other}});
    click(slotSwitch("G1", 1));
    EXPECT_EQ(platform::description(plugin().savedData()), "{G1 = {S1 = a; length = 1}; G2 = {S2 = c}}");
}

TEST_F(SwitchTest, WithoutARecordNothingIsStored)
{
    drawGroup(0, {{"input", allSlots}});
    plugin().setSavedData({});
    click(slotSwitch("G1", 1));
    EXPECT_EQ(plugin().savedData(), Dictionary{});
}

TEST_F(SwitchTest, AGroupsStatusIsKeptUnderTheStationsSlotNames)
{
    platform::Box around{platform::Rect(0, 0, 100, 100)};
    plugin();
    plugin().switchBtnClicked(handMade(around, "G1-102-Third", nullptr, Button::Off));
    EXPECT_EQ(statusText("G1"), "{S1 = 1; S2 = 1; S4 = 1}");
    plugin().switchBtnClicked(handMade(around, "G1-102-Third", nullptr, Button::On));
    EXPECT_EQ(statusText("G1"), "{S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
}

TEST_F(SwitchTest, AViewThatIsNoGroupHasAStatusUnderTheSwitchsOwnSlotKey)
{
    platform::Box around{platform::Rect(0, 0, 100, 100)};
    plugin();
    plugin().switchBtnClicked(handMade(around, "3-103-door-left", nullptr, Button::On));
    EXPECT_EQ(statusText("3"), "{door-left = 1}");
}

TEST_F(SwitchTest, TheFirstClickInAViewMakesItsStatus)
{
    platform::Box around{platform::Rect(0, 0, 100, 100)};
    plugin();
    plugin().switchBtnClicked(handMade(around, "3-103-door", nullptr, Button::Off));
    EXPECT_TRUE(plugin().enableStatus().contains("3"));
    EXPECT_EQ(statusText("3"), "{}");
}

TEST_F(SwitchTest, AnythingButOnTakesTheSlotOut)
{
    platform::Box around{platform::Rect(0, 0, 100, 100)};
    plugin();
    plugin().switchBtnClicked(handMade(around, "G1-100-S1", nullptr, Button::Mixed));
    EXPECT_EQ(statusText("G1"), "{S2 = 1; S3 = 1; S4 = 1}");
    EXPECT_EQ(around.fillColor(), Color::windowBackground());
}

TEST_F(SwitchTest, AnIdentifierWithoutHyphensIsKeyTagAndSlotAlike)
{
    platform::Box around{platform::Rect(0, 0, 100, 100)};
    plugin();
    plugin().setSavedData({{"door", Dictionary{{"door", "x"}, {"y", "z"}}}});
    plugin().switchBtnClicked(handMade(around, "door", nullptr, Button::On));
    EXPECT_EQ(statusText("door"), "{door = 1}");
    EXPECT_EQ(platform::description(record("door")), "{y = z}");
}

TEST_F(SwitchTest, TheTagFindsTheFieldAndTheFieldKnowsItsSystem)
{
    platform::Box around{platform::Rect(0, 0, 100, 100)};
    plugin();
    auto *field = new MouseTrackedTextField;
    field->setTag(101);
    field->setSystemIndex(6);
    field->setStringValue("x");
    plugin().switchBtnClicked(handMade(around, "G1-101-S2", field, Button::On));
    EXPECT_EQ(field->stringValue(), "");
    EXPECT_EQ(around.fillColor(), plugin().bgColor(6).withAlphaComponent(plugin().backgroundAlpha()));
}

TEST_F(SwitchTest, WhereTheTagIsOfAnotherViewTheBoxTakesTheSwitchsSystem)
{
    platform::Box around{platform::Rect(0, 0, 100, 100)};
    plugin();
    auto *label = new platform::TextField;
    label->setTag(101);
    label->setStringValue("kept");
    plugin().switchBtnClicked(handMade(around, "G1-101-S2", label, Button::On));
    EXPECT_EQ(label->stringValue(), "kept");
    EXPECT_TRUE(label->isEnabled());
    EXPECT_EQ(around.fillColor(), plugin().bgColor(1).withAlphaComponent(plugin().backgroundAlpha()));
}

TEST_F(SwitchTest, OutsideABoxOnlyTheRecordsChange)
{
    plugin();
    platform::View parent;
    auto *button = new Button(&parent);
    button->setIdentifier(Identifier(QStringLiteral("G1-100-S1")));
    button->setState(Button::Off);
    plugin().switchBtnClicked(button);
    EXPECT_EQ(statusText("G1"), "{S2 = 1; S3 = 1; S4 = 1}");
}

TEST_F(SwitchTest, AnythingButAButtonIsIgnoredWithoutALine)
{
    plugin();
    const Dictionary before = plugin().enableStatus();
    platform::View view;
    view.setIdentifier(Identifier(QStringLiteral("G1-100-S1")));
    plugin().switchBtnClicked(&view);
    plugin().switchBtnClicked(nullptr);
    EXPECT_EQ(plugin().enableStatus(), before);
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView switchBtnClicked:]"), 0);
}

TEST_F(SwitchTest, EverySlotOfAPanelMayBeSwitchedOff)
{
    drawGroup(0, {{"input", allSlots}});
    for (int slot = 0; slot < 4; ++slot)
        click(slotSwitch("G1", slot));
    EXPECT_EQ(statusText("G1"), "{}");
}

} // namespace
