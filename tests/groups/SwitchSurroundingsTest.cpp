#include "tests/groups/GroupFixture.h"

using interactive::MouseTrackedTextField;
using platform::Array;
using platform::Box;
using platform::Button;
using platform::Color;
using platform::Dictionary;
using platform::Identifier;
using platform::Rect;
using platform::TextField;
using platform::View;

namespace {

const Color third{0.1, 0.2, 0.3, 1.0};
const Color fourth{0.5, 0.6, 0.7, 1.0};

/// The switch handler with switches of any identifier in surroundings of any kind.
class SwitchSurroundingsTest : public testsupport::GroupFixture
{
protected:
    SwitchSurroundingsTest()
    {
        station.customColors = true;
        station.backgrounds = {{3, third}, {4, fourth}};
    }
    void SetUp() override
    {
        m_box = std::make_unique<Box>(Rect(0, 0, 250, 64));
        m_box->setFillColor(Color::black());
    }
    void TearDown() override
    {
        m_box.reset();
        GroupFixture::TearDown();
    }

    /// A switch in the content of the box.
    Button *addSwitch(const Identifier &identifier)
    {
        auto *made = new Button(Rect(0, 0, 30, 30));
        made->setButtonType(Button::Type::Switch);
        made->setIdentifier(identifier);
        m_box->contentView()->addSubview(made);
        return made;
    }
    MouseTrackedTextField *addField(int tag, const platform::Value &systemIndex)
    {
        auto *made = new MouseTrackedTextField(Rect(40, 0, 100, 20));
        made->setTag(tag);
        made->setSystemIndex(systemIndex);
        made->setStringValue("typed");
        m_box->contentView()->addSubview(made);
        return made;
    }
    /// A click that has brought the switch into that state.
    void flip(Button *button, Button::State state)
    {
        button->setState(state);
        rooms().switches.switchBtnClicked(button);
    }
    Color fill() const { return m_box->fillColor(); }

    std::unique_ptr<Box> m_box;
};

TEST_F(SwitchSurroundingsTest, AGroupsStatusIsKeptUnderTheStationsSlotNameAndTheRecordUnderTheSwitchsOwn)
{
    rooms().records.restore({{"G1", Dictionary{{"S3", "A"}, {"Other", "B"}}}});
    Button *button = addSwitch(Identifier("G1-102-Other"));
    flip(button, Button::Off);
    EXPECT_EQ(platform::description(status("G1")), "{S1 = 1; S2 = 1; S4 = 1}");
    EXPECT_EQ(platform::description(record("G1")), "{S3 = A}");
    flip(button, Button::On);
    EXPECT_EQ(platform::description(status("G1")), "{S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
}

TEST_F(SwitchSurroundingsTest, TheSlotNameIsThatOfTheVerySystem)
{
    station.systemGroups = Array{"G1", "G2", "G1", "G2"};
    station.systemSlots = Array{"A", "B", "C", "D"};
    rooms().slotStates.restore({});
    flip(addSwitch(Identifier("G2-103-X")), Button::On);
    EXPECT_EQ(platform::description(plugin().enableStatus()), "{G2 = {D = 1}}");
}

TEST_F(SwitchSurroundingsTest, TheFirstSwitchOnMakesAStatusOfThatSlotAlone)
{
    Button *button = addSwitch(Identifier("3-103-SN"));
    ASSERT_FALSE(plugin().enableStatus().contains("3"));
    flip(button, Button::On);
    EXPECT_EQ(platform::description(status("3")), "{SN = 1}");
}

TEST_F(SwitchSurroundingsTest, TheFirstSwitchOffMakesAStatusWithoutSlots)
{
    flip(addSwitch(Identifier("3-103-SN")), Button::Off);
    EXPECT_TRUE(plugin().enableStatus().contains("3"));
    EXPECT_EQ(platform::description(status("3")), "{}");
}

TEST_F(SwitchSurroundingsTest, ANameWithHyphensBelongsToTheSlotWhole)
{
    rooms().records.restore({{"3", Dictionary{{"SN-2-b", "A"}, {"SN", "B"}}}});
    flip(addSwitch(Identifier("3-103-SN-2-b")), Button::On);
    EXPECT_EQ(platform::description(status("3")), "{SN-2-b = 1}");
    EXPECT_EQ(platform::description(record("3")), "{SN = B}");
}

TEST_F(SwitchSurroundingsTest, ASwitchOfAGroupThatIsNamedWithAHyphenBelongsToNoGroup)
{
    station.groups = {"A-1"};
    flip(addSwitch(Identifier("A-1-102-S3")), Button::On);
    EXPECT_EQ(platform::description(plugin().enableStatus()),
              "{A = {102-S3 = 1}; A-1 = {S1 = 1; S2 = 1; S3 = 1; S4 = 1}}");
}

TEST_F(SwitchSurroundingsTest, AMixedStateIsNotOn)
{
    MouseTrackedTextField *field = addField(103, 3);
    flip(addSwitch(Identifier("G1-103-S4")), Button::Mixed);
    EXPECT_FALSE(status("G1").contains("S4"));
    EXPECT_FALSE(field->isEnabled());
    EXPECT_EQ(fill(), Color::windowBackground());
}

TEST_F(SwitchSurroundingsTest, TheFieldWithTheTagIsTheOneThatIsSwitched)
{
    MouseTrackedTextField *other = addField(102, 2);
    MouseTrackedTextField *own = addField(103, 3);
    Button *button = addSwitch(Identifier("3-103-SN"));
    flip(button, Button::Off);
    EXPECT_FALSE(own->isEnabled());
    EXPECT_EQ(own->stringValue(), "");
    EXPECT_TRUE(other->isEnabled());
    EXPECT_EQ(other->stringValue(), "typed");
    own->setStringValue("typed");
    flip(button, Button::On);
    EXPECT_TRUE(own->isEnabled());
    EXPECT_EQ(own->stringValue(), "");
}

TEST_F(SwitchSurroundingsTest, TheBoxTakesTheColourOfTheFieldsSystem)
{
    addField(103, 4);
    flip(addSwitch(Identifier("3-103-SN")), Button::On);
    EXPECT_EQ(fill(), fourth.withAlphaComponent(0.3));
}

TEST_F(SwitchSurroundingsTest, WithoutAFieldTheBoxTakesTheColourOfTheTagsSystem)
{
    Button *button = addSwitch(Identifier("3-103-SN"));
    flip(button, Button::On);
    EXPECT_EQ(fill(), third.withAlphaComponent(0.3));
    flip(button, Button::Off);
    EXPECT_EQ(fill(), Color::windowBackground());
}

TEST_F(SwitchSurroundingsTest, APlainFieldWithTheTagIsLeftAloneAndTheBoxPaintedAllTheSame)
{
    auto *plain = new TextField(Rect(40, 0, 100, 20));
    plain->setTag(103);
    plain->setStringValue("typed");
    m_box->contentView()->addSubview(plain);
    Button *button = addSwitch(Identifier("3-103-SN"));
    flip(button, Button::Off);
    EXPECT_TRUE(plain->isEnabled());
    EXPECT_EQ(plain->stringValue(), "typed");
    EXPECT_EQ(fill(), Color::windowBackground());
    flip(button, Button::On);
    EXPECT_EQ(fill(), third.withAlphaComponent(0.3));
}

TEST_F(SwitchSurroundingsTest, WithoutABoxAroundItTheFieldIsSwitchedAlone)
{
    View *container = addPane(Identifier("3"));
    auto *field = new MouseTrackedTextField(Rect(40, 0, 100, 20));
    field->setTag(103);
    container->addSubview(field);
    auto *button = new Button(Rect(0, 0, 30, 30));
    button->setIdentifier(Identifier("3-103-SN"));
    container->addSubview(button);
    flip(button, Button::Off);
    EXPECT_FALSE(field->isEnabled());
}

TEST_F(SwitchSurroundingsTest, ASwitchThatNobodyHoldsChangesTheStatusAlone)
{
    Button alone;
    alone.setIdentifier(Identifier("G1-102-S3"));
    flip(&alone, Button::Off);
    EXPECT_EQ(platform::description(status("G1")), "{S1 = 1; S2 = 1; S4 = 1}");
}

TEST_F(SwitchSurroundingsTest, ASwitchWithoutAnIdentifierTouchesNeitherFieldNorBox)
{
    MouseTrackedTextField *field = addField(0, 3);
    flip(addSwitch(Identifier()), Button::Off);
    EXPECT_TRUE(field->isEnabled());
    EXPECT_EQ(field->stringValue(), "typed");
    EXPECT_EQ(fill(), Color::black());
}

TEST_F(SwitchSurroundingsTest, AnIdentifierWithoutAHyphenIsPanelTagAndSlotAlike)
{
    rooms().slotStates.restore({});
    rooms().records.restore({{"X", Dictionary{{"X", "A"}, {"Y", "B"}}}});
    flip(addSwitch(Identifier("X")), Button::On);
    EXPECT_EQ(platform::description(plugin().enableStatus()), "{X = {X = 1}}");
    EXPECT_EQ(platform::description(record("X")), "{Y = B}");
    // The tag is 0, which is nobody's system.
    EXPECT_EQ(fill(), Color::white().withAlphaComponent(0.3));
}

TEST_F(SwitchSurroundingsTest, AnIdentifierOfAGroupWithoutAHyphenIsKeptUnderItsOwnName)
{
    flip(addSwitch(Identifier("G1")), Button::On);
    EXPECT_EQ(platform::description(status("G1")), "{G1 = 1; S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
}

TEST_F(SwitchSurroundingsTest, ATagIsReadUpToItsFirstCharacterThatIsNoDigit)
{
    MouseTrackedTextField *field = addField(103, 3);
    flip(addSwitch(Identifier("3-103x-SN")), Button::Off);
    EXPECT_FALSE(field->isEnabled());
}

TEST_F(SwitchSurroundingsTest, TheWholeStatusIsLoggedForASystemPanel)
{
    rooms().slotStates.restore({{"G1", Dictionary{{"S1", -1}}}});
    log.clear();
    flip(addSwitch(Identifier("3-103-SN")), Button::On);
    EXPECT_EQ(logged(), QStringList{"default: -[InteractiveView switchBtnClicked:]: enable status: {3 = {SN "
                                    "= 1}; G1 = {S1 = -1}}"});
}

TEST_F(SwitchSurroundingsTest, AnythingButAButtonIsIgnoredWithoutALine)
{
    plugin();
    const Dictionary before = plugin().enableStatus();
    View view;
    view.setIdentifier(Identifier(QStringLiteral("G1-100-S1")));
    rooms().switches.switchBtnClicked(&view);
    rooms().switches.switchBtnClicked(nullptr);
    EXPECT_EQ(plugin().enableStatus(), before);
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView switchBtnClicked:]"), 0);
}

} // namespace
