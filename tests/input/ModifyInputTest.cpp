#include "platform/Button.h"
#include "platform/TextField.h"
#include "presentation/MouseTrackedTextField.h"
#include "tests/support/PluginFixture.h"

using interactive::MouseTrackedTextField;
using platform::Array;
using platform::Dictionary;
using platform::Identifier;

namespace {

const QString method = QStringLiteral("-[InteractiveView modifyInput:]");

/// Forgetting the entry of a field's slot on request.
class ModifyInputTest : public testsupport::PluginFixture
{
protected:
    bool modify(const QString &identifier)
    {
        MouseTrackedTextField sender;
        sender.setIdentifier(Identifier(identifier));
        return rooms().focus.modifyInput(&sender, rooms().records);
    }
};

TEST_F(ModifyInputTest, ForgetsTheSlotsEntryAndKeepsTheLength)
{
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}, {"S2", "B"}, {"length", 1}}}});
    EXPECT_FALSE(modify("G1-S1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"S2", "B"}, {"length", 1}}));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, method + ": G1-S1, G1, S1"));
}

TEST_F(ModifyInputTest, ForgetsAnEntryUnderThePanelsOwnNameToo)
{
    rooms().records.restore({{"G1", Dictionary{{"G1", "X"}, {"S2", "B"}, {"length", 1}}}});
    EXPECT_FALSE(modify("G1-S1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"S2", "B"}, {"length", 1}}));
}

TEST_F(ModifyInputTest, AnotherSenderIsIgnoredWithoutAWord)
{
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    const int before = timesLoggedFrom("");
    platform::Button button;
    button.setIdentifier(Identifier("G1-S1"));
    EXPECT_FALSE(rooms().focus.modifyInput(&button, rooms().records));
    EXPECT_FALSE(rooms().focus.modifyInput(nullptr, rooms().records));
    EXPECT_EQ(timesLoggedFrom(""), before);
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "A"}}));
}

TEST_F(ModifyInputTest, OnADrawnPanelTheFocusStaysWhereItWas)
{
    showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    click(rooms().loop.loopNumberField());
    EXPECT_FALSE(rooms().focus.modifyInput(field("G1-S1"), rooms().records));
    EXPECT_TRUE(rooms().loop.loopNumberField()->isFirstResponder());
    EXPECT_FALSE(record("G1").contains("S1"));
}

/// A station where a slot bears the name of its group.
class ModifyNamesakeTest : public ModifyInputTest
{
protected:
    ModifyNamesakeTest() { station.groups = {"S1", "G2"}; }

    void ask()
    {
        showGroup(0, {{"input", Array{"S1", "S2"}}});
        ASSERT_TRUE(waitForPanel("S1"));
        scan("A");
        click(rooms().loop.loopNumberField());
    }
};

TEST_F(ModifyNamesakeTest, TheFieldThatBearsThePanelsNameBringsTheFocusToTheSharedField)
{
    ask();
    EXPECT_TRUE(rooms().focus.modifyInput(field("S1-S2"), rooms().records));
    EXPECT_TRUE(field("S1-SharedInput")->isFirstResponder());
}

TEST_F(ModifyNamesakeTest, ADisabledNamesakeDoesNot)
{
    ask();
    field("S1-S1")->setEnabled(false);
    EXPECT_FALSE(rooms().focus.modifyInput(field("S1-S2"), rooms().records));
    EXPECT_FALSE(field("S1-SharedInput")->isFirstResponder());
}

TEST_F(ModifyNamesakeTest, WithoutRegisteredFieldsTheEntryIsForgottenAllTheSame)
{
    ask();
    rooms().views.setResponders("S1", {});
    EXPECT_FALSE(rooms().focus.modifyInput(field("S1-S1"), rooms().records));
    EXPECT_FALSE(record("S1").contains("S1"));
}

} // namespace
