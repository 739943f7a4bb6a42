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
        return plugin().modifyInput(&sender);
    }
};

TEST_F(ModifyInputTest, ForgetsTheSlotsEntryAndKeepsTheLength)
{
    plugin().setSavedData({{"G1", Dictionary{{"S1", "A"}, {"S2", "B"}, {"length", 1}}}});
    EXPECT_FALSE(modify("G1-S1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"S2", "B"}, {"length", 1}}));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, method + ": G1-S1, G1, S1"));
}

TEST_F(ModifyInputTest, ForgetsAnEntryUnderThePanelsOwnNameToo)
{
    plugin().setSavedData({{"G1", Dictionary{{"G1", "X"}, {"S2", "B"}, {"length", 1}}}});
    EXPECT_FALSE(modify("G1-S1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"S2", "B"}, {"length", 1}}));
}

TEST_F(ModifyInputTest, AnotherSenderIsIgnoredWithoutAWord)
{
    plugin().setSavedData({{"G1", Dictionary{{"S1", "A"}}}});
    const int before = timesLoggedFrom("");
    platform::Button button;
    button.setIdentifier(Identifier("G1-S1"));
    EXPECT_FALSE(plugin().modifyInput(&button));
    EXPECT_FALSE(plugin().modifyInput(nullptr));
    EXPECT_EQ(timesLoggedFrom(""), before);
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "A"}}));
}

TEST_F(ModifyInputTest, OnADrawnPanelTheFocusStaysWhereItWas)
{
    showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    click(plugin().loopNumberField());
    EXPECT_FALSE(plugin().modifyInput(field("G1-S1")));
    EXPECT_TRUE(plugin().loopNumberField()->isFirstResponder());
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
        click(plugin().loopNumberField());
    }
};

TEST_F(ModifyNamesakeTest, TheFieldThatBearsThePanelsNameBringsTheFocusToTheSharedField)
{
    ask();
    EXPECT_TRUE(plugin().modifyInput(field("S1-S2")));
    EXPECT_TRUE(field("S1-SharedInput")->isFirstResponder());
}

TEST_F(ModifyNamesakeTest, ADisabledNamesakeDoesNot)
{
    ask();
    field("S1-S1")->setEnabled(false);
    EXPECT_FALSE(plugin().modifyInput(field("S1-S2")));
    EXPECT_FALSE(field("S1-SharedInput")->isFirstResponder());
}

TEST_F(ModifyNamesakeTest, WithoutRegisteredFieldsTheEntryIsForgottenAllTheSame)
{
    ask();
    plugin().setResponders("S1", {});
    EXPECT_FALSE(plugin().modifyInput(field("S1-S1")));
    EXPECT_FALSE(record("S1").contains("S1"));
}

} // namespace
