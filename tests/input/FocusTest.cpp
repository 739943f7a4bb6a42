#include "platform/Button.h"
#include "platform/TextField.h"
#include "presentation/MouseTrackedTextField.h"
#include "tests/input/InputRoom.h"
#include "tests/support/PluginFixture.h"

#include <string>
#include <vector>

using interactive::Focus;
using interactive::MouseTrackedTextField;
using platform::Array;
using platform::Dictionary;
using platform::TextField;
using platform::Value;

namespace {

/// Input fields that a test places into the window itself.
class FocusFixture : public testsupport::PluginFixture
{
protected:
    template <class Kind = MouseTrackedTextField>
    Kind *add(const QString &text = {})
    {
        auto *made = new Kind(platform::Rect(500.0, 100.0 + 30.0 * m_made++, 100.0, 25.0));
        made->setEditable(true);
        made->setStringValue(text);
        rootView()->addSubview(made);
        return made;
    }

private:
    int m_made = 0;
};

class ResponderChainTest : public FocusFixture
{};

TEST_F(ResponderChainTest, EachFieldLeadsToTheNextAndTheLastToNone)
{
    TextField *first = add();
    TextField *second = add();
    TextField *third = add();
    Focus::setupResponderChain({first, second, third});
    EXPECT_EQ(first->explicitNextResponder(), second);
    EXPECT_EQ(first->nextKeyView(), second);
    EXPECT_EQ(second->explicitNextResponder(), third);
    EXPECT_EQ(second->nextKeyView(), third);
    EXPECT_EQ(third->explicitNextResponder(), nullptr);
    EXPECT_EQ(third->nextKeyView(), nullptr);
}

TEST_F(ResponderChainTest, OneFieldGetsNoLinks)
{
    TextField *only = add();
    Focus::setupResponderChain({only});
    EXPECT_EQ(only->explicitNextResponder(), nullptr);
    EXPECT_EQ(only->nextKeyView(), nullptr);
}

TEST_F(ResponderChainTest, NoFieldsAreNoChain)
{
    Focus::setupResponderChain({});
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView setupResponderChain:]"), 0);
}

TEST_F(ResponderChainTest, AFieldThatIsGoneIsPassedOver)
{
    TextField *first = add();
    QPointer<TextField> gone = add();
    TextField *third = add();
    interactive::Responders fields{first, gone, third};
    delete gone.data();
    Focus::setupResponderChain(fields);
    EXPECT_EQ(third->explicitNextResponder(), nullptr);
}

TEST_F(ResponderChainTest, TheFieldsOfADrawnGroupPanelAreLinkedInSlotOrderWithTheSharedFieldLast)
{
    showGroup(0, {{"input", Array{"S3", "S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    QStringList order;
    for (platform::View *member = field("G1-S1"); member;) {
        order.append(member->identifier().text());
        const auto *text = qobject_cast<TextField *>(member);
        member = text ? text->explicitNextResponder() : nullptr;
    }
    EXPECT_EQ(order, (QStringList{"G1-S1", "G1-S2", "G1-S3", "G1-S4", "G1-SharedInput"}));
    EXPECT_EQ(field("G1-S1")->explicitNextResponder(), field("G1-S2"));
    EXPECT_EQ(field("G1-S4")->explicitNextResponder(), field("G1-SharedInput"));
    EXPECT_EQ(field("G1-SharedInput")->explicitNextResponder(), nullptr);
}

class ActivateResponderTest : public FocusFixture
{};

TEST_F(ActivateResponderTest, AnEnabledFieldTakesTheFocusWithItsTextSelected)
{
    TextField *target = add("ABC");
    Focus::activateResponder(target);
    EXPECT_TRUE(target->isFirstResponder());
    EXPECT_EQ(target->selectedText(), "ABC");
}

TEST_F(ActivateResponderTest, ADisabledFieldHandsTheFocusToTheNextEnabledOne)
{
    TextField *disabled = add("one");
    TextField *enabled = add("two");
    disabled->setEnabled(false);
    Focus::setupResponderChain({disabled, enabled});
    Focus::activateResponder(disabled);
    EXPECT_TRUE(enabled->isFirstResponder());
    EXPECT_EQ(enabled->selectedText(), "two");
    EXPECT_FALSE(disabled->isFirstResponder());
}

TEST_F(ActivateResponderTest, SeveralDisabledFieldsArePassedOver)
{
    TextField *first = add("one");
    TextField *second = add("two");
    TextField *third = add("three");
    first->setEnabled(false);
    second->setEnabled(false);
    Focus::setupResponderChain({first, second, third});
    Focus::activateResponder(first);
    EXPECT_TRUE(third->isFirstResponder());
}

TEST_F(ActivateResponderTest, TheFirstEnabledFieldIsTheEndOfTheSearch)
{
    TextField *first = add("one");
    TextField *second = add("two");
    Focus::setupResponderChain({first, second});
    Focus::activateResponder(first);
    EXPECT_TRUE(first->isFirstResponder());
    EXPECT_EQ(second->selectedText(), "");
}

TEST_F(ActivateResponderTest, AnEnabledFieldThatIsNoInputFieldIsPassedOver)
{
    auto *plain = add<TextField>("one");
    TextField *input = add("two");
    plain->setNextResponder(input);
    Focus::activateResponder(plain);
    EXPECT_TRUE(input->isFirstResponder());
    EXPECT_EQ(input->selectedText(), "two");
}

TEST_F(ActivateResponderTest, AChainWithoutAnEnabledFieldEndsQuietly)
{
    TextField *first = add("one");
    TextField *last = add("two");
    first->setEnabled(false);
    last->setEnabled(false);
    Focus::setupResponderChain({first, last});
    Focus::activateResponder(first);
    EXPECT_FALSE(first->isFirstResponder());
    EXPECT_FALSE(last->isFirstResponder());
}

TEST_F(ActivateResponderTest, NoResponderChangesNothing)
{
    TextField *focused = add("ABC");
    Focus::activateResponder(focused);
    Focus::activateResponder(nullptr);
    EXPECT_TRUE(focused->isFirstResponder());
}

struct Pending
{
    std::string name;
    Array filled;
    const char *expected; ///< Empty: none.
    const char *filledText;
};

class NextEnabledSlotTest : public testsupport::InputRoom, public ::testing::WithParamInterface<Pending>
{};

TEST_P(NextEnabledSlotTest, IsTheFirstInTheMappingsOrderThatIsEnabledAndEmpty)
{
    slotStates.restore({{"G1", Dictionary{{"S1", 1}, {"S2", -1}, {"S3", 0}}}});
    const Value next = focus.nextEnabledSlot(GetParam().filled, waits.panelKey("G1"));
    EXPECT_EQ(next.toString(), GetParam().expected);
    EXPECT_EQ(next.isValid(), *GetParam().expected != '\0');
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Debug, QString("G1, %1. sortedKeys: (S1, S3)").arg(GetParam().filledText)));
}

const std::vector<Pending> pendings = {
    {"NothingFilled", {}, "S1", "()"},
    {"FirstFilled", {"S1"}, "S3", "(S1)"},
    {"BothFilled", {"S1", "S3"}, "", "(S1, S3)"},
    {"LaterFilled", {"S3"}, "S1", "(S3)"},
    {"DisabledFilled", {"S2"}, "S1", "(S2)"},
    {"OthersFilled", {"length", "clickedButton"}, "S1", "(length, clickedButton)"},
    {"AnotherCaseFilled", {"s1"}, "S1", "(s1)"},
};

INSTANTIATE_TEST_SUITE_P(EachCase, NextEnabledSlotTest, ::testing::ValuesIn(pendings),
                         [](const auto &row) { return row.param.name; });

class NoPendingSlotTest : public testsupport::InputRoom
{};

TEST_F(NoPendingSlotTest, APanelWithoutStatusWaitsForNoSlot)
{
    EXPECT_FALSE(focus.nextEnabledSlot({}, waits.panelKey("0")).isValid());
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, "0, (). sortedKeys: ()"));
}

TEST_F(NoPendingSlotTest, TheSearchLeavesTheStatusAsItWas)
{
    const Dictionary status{{"G1", Dictionary{{"S1", -1}, {"S2", 1}}}};
    slotStates.restore(status);
    EXPECT_EQ(focus.nextEnabledSlot({}, waits.panelKey("G1")), Value("S2"));
    EXPECT_EQ(slotStates.all(), status);
}

TEST_F(NoPendingSlotTest, TheSearchMayRunOnAnyThread)
{
    slotStates.setUp("G1", {"S1", "S2"});
    testsupport::SequencerCall call(
        [this](platform::Error *) { return focus.nextEnabledSlot({"S1"}, waits.panelKey("G1")); });
    EXPECT_EQ(call.result(), Value("S2"));
}

} // namespace
