#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

const QString switchIsNoArray = QStringLiteral("Invalid config. Value for key 'switch' is not array.");
const QString inputIsNoArray = QStringLiteral("Invalid config. Value for key 'input' is not array.");
const QString twoInputs = QStringLiteral("Invalid config. Allow 1 input field a time in split mode.");

/// Configurations that a show call does not draw: the operator reads why, and the sequence goes on after
/// "OK".
class RefusalTest : public testsupport::PluginFixture
{
protected:
    /// Waits for the error panel of the group and answers it; true when the panel showed the message.
    bool acknowledge(const QString &group, const QString &message)
    {
        if (!waitForPanel(group))
            return false;
        bool shown = false;
        for (platform::View *view : panel(group)->subviews()) {
            auto *label = qobject_cast<platform::TextField *>(view);
            shown = shown || (label && label->stringValue() == message);
        }
        press(group, "OK");
        return shown;
    }
};

TEST_F(RefusalTest, SwitchesThatAreNoArrayAreShownAndGiveNothingWithoutAnError)
{
    auto &call = showGroup(0, {{"switch", "S1"}});
    EXPECT_TRUE(acknowledge("G1", switchIsNoArray));
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error(), Error());
    EXPECT_FALSE(isOpen("G1"));
    EXPECT_EQ(rooms().views.scrollView()->documentSize(), platform::Size(0.0, 0.0));
}

TEST_F(RefusalTest, InputsThatAreNoArrayAreShownAndGiveNothingWithoutAnError)
{
    auto &call = showGroup(1, {{"input", Dictionary{{"a", 1}}}});
    EXPECT_TRUE(acknowledge("G2", inputIsNoArray));
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error(), Error());
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Debug,
                   "Called: -[InteractiveView showError:config:identifier:], message: " + inputIsNoArray));
}

TEST_F(RefusalTest, SwitchesAreLookedAtBeforeInputsAndOneRefusalIsEnough)
{
    auto &call = showGroup(0, {{"input", 4}, {"switch", 5}});
    EXPECT_TRUE(acknowledge("G1", switchIsNoArray));
    EXPECT_EQ(call.result(), Value());
    EXPECT_FALSE(isOpen("G1"));
}

TEST_F(RefusalTest, ASystemsRefusalIsShownInItsGroupsPlace)
{
    auto &call = showView(5, {{"input", "SN"}});
    EXPECT_TRUE(acknowledge("G2", inputIsNoArray));
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error(), Error());
    EXPECT_FALSE(isOpen("5"));
}

TEST_F(RefusalTest, ARefusedConfigurationIsShownAndReturnedAsAnError)
{
    auto &call = showView(0, {{"input", Array{"A", "B"}}});
    EXPECT_TRUE(acknowledge("G1", twoInputs));
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error(), (Error{interactive::InteractivePluginErrorDomain, 105, twoInputs}));
}

TEST_F(RefusalTest, TheCallWaitsUntilTheRefusalIsAcknowledged)
{
    auto &call = showView(0, {{"input", Array{"A", "B"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    settle();
    EXPECT_FALSE(call.finished());
    press("G1", "OK");
    EXPECT_TRUE(call.waitUntilFinished());
}

TEST_F(RefusalTest, ARefusedConfigurationHighlightsNothingAndDrawsNoInput)
{
    auto &call = showView(0, {{"input", Array{"A", "B"}}, {"length", 8}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(field("0-A"), nullptr);
    EXPECT_FALSE(record("0").contains("length"));
    press("G1", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_TRUE(highlights.empty());
}

TEST_F(RefusalTest, AfterARefusalTheSequenceCanAskAgain)
{
    auto &refused = showGroup(0, {{"input", Array{"S1", "S1"}}});
    ASSERT_TRUE(acknowledge("G1", "Invalid config. Allow up to 12 input fields and no duplications."));
    ASSERT_TRUE(refused.waitUntilFinished());
    EXPECT_EQ(refused.error().code, 104);

    auto &asked = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_NE(field("G1-SharedInput"), nullptr);
    press("G1", "Cancel");
    EXPECT_EQ(asked.result(), Value());
    EXPECT_EQ(asked.error(), Error());
}

TEST_F(RefusalTest, ACallerWithoutAPlaceForAnErrorGetsItsPanelDrawn)
{
    auto &call = showViewWithoutError(0, {{"input", Array{"A", "B"}}});
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_NE(field("0-A"), nullptr);
    scan("X");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("A"), Value("X"));
}

TEST_F(RefusalTest, ACallerWithoutAPlaceForAnErrorGetsAGroupPanelDrawnToo)
{
    auto &call = showGroupWithoutError(0, {{"input", Array{"S1", "S1", "nowhere"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_NE(field("G1-SharedInput"), nullptr);
    press("G1", "Cancel");
    EXPECT_EQ(call.result(), Value());
}

TEST_F(RefusalTest, AnErrorThatTheCallerBringsAlongIsShownAndKept)
{
    interactive::InteractiveView &target = plugin();
    const Error brought{"elsewhere", 7, "The fixture is open."};
    auto &call = onSequencer([&](Error *error) {
        *error = brought;
        return target.showGroupView(0, {{"input", Array{"S1"}}}, error);
    });
    EXPECT_TRUE(acknowledge("G1", "The fixture is open."));
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error(), brought);
}

TEST_F(RefusalTest, InLoopModeAnAnswerThatIsThereComesBeforeValidation)
{
    setLoop(2);
    rooms().records.restore({{"0", Dictionary{{"A", "X"}}}});
    auto &call = showView(0, {{"input", Array{"A", "B"}}});
    EXPECT_EQ(call.result(), Value(Dictionary{{"A", "X"}}));
    EXPECT_EQ(call.error(), Error());
}

TEST_F(RefusalTest, AFocusOrderThatAnEarlierPanelLeftDoesNotHoldTheAcknowledgementUp)
{
    auto &cancelled = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Cancel");
    ASSERT_TRUE(cancelled.waitUntilFinished());

    auto &refused = showGroup(0, {{"input", Array{"S1", "S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "OK");
    EXPECT_EQ(refused.error().code, 104);
}

TEST_F(RefusalTest, TheAcknowledgementDoesNotEndTheNextCall)
{
    interactive::InteractiveView &target = plugin();
    auto &sequence = onSequencer([&target](Error *error) {
        target.showGroupView(0, {{"input", Array{"S1", "S1"}}}, error);
        *error = {};
        return target.showGroupView(0, {{"input", Array{"S1"}}}, error);
    });
    ASSERT_TRUE(waitForPanel("G1"));
    expectError("<Button: Pass>(Pass), no parent view found"); // what the second press finds
    QPointer<platform::Button> ok = button("G1", "OK");
    ok->sendAction();
    ok->sendAction();
    ASSERT_TRUE(testsupport::waitUntil([&] { return field("G1-SharedInput") != nullptr; }));
    settle();
    EXPECT_FALSE(sequence.finished());
    EXPECT_EQ(record("G1"), (Dictionary{{"length", 0}}));
}

} // namespace
