#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

const Dictionary serial{{"input", Array{"S1"}}};

/// Which answers loop mode has, and when it has them no more.
class LoopAnswerTest : public testsupport::PluginFixture
{
protected:
    void answerGroup(const QString &text)
    {
        testsupport::SequencerCall &call = showGroup(0, serial);
        ASSERT_TRUE(waitForPanel("G1"));
        scan(text);
        press("G1", "OK");
        EXPECT_EQ(call.result().toMap().value("S1"), Value(text));
    }
};

TEST_F(LoopAnswerTest, OneThatWasAskedForAnewAndCancelledIsNoneAnyMore)
{
    answerGroup("A");
    auto &again = showGroup(0, serial);
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Cancel");
    ASSERT_EQ(again.result(), Value());
    rooms().records.setLoopEnabled(true);
    showGroup(0, serial);
    EXPECT_TRUE(waitForPanel("G1"));
}

TEST_F(LoopAnswerTest, TheEndOfALoopLeavesWhatIsBeingEntered)
{
    rooms().records.startLoop(2, 2);
    answerGroup("A");
    ASSERT_EQ(plugin().isLoopFinished(0, nullptr), Value(0));
    auto &next = showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("B");
    ASSERT_EQ(plugin().isLoopFinished(0, nullptr), Value(1));
    scan("C");
    press("G1", "OK");
    EXPECT_EQ(next.result(), Value(Dictionary{{"S1", "B"}, {"S2", "C"}, {"clickedButton", "Pass"}}));
}

TEST_F(LoopAnswerTest, TheEndOfALoopAsksAGroupAnew)
{
    rooms().records.startLoop(2, 2);
    answerGroup("A");
    ASSERT_EQ(plugin().isLoopFinished(0, nullptr), Value(0));
    ASSERT_EQ(plugin().isLoopFinished(0, nullptr), Value(1));
    answerGroup("B");
}

} // namespace
