#include "tests/monkey/MonkeyFixture.h"
#include "tests/monkey/Promises.h"
#include "tests/support/Wait.h"

#include <algorithm>
#include <vector>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace monkey {
namespace {

const Dictionary twoInputs{{"input", Array{"A", "B"}}};
const Dictionary question{{"button", Array{"No", "Yes"}}};
constexpr int TooManyInputsForSystem = 105;
constexpr int Interrupted = 401;

/// Calls of one group that meet: each is answered by its own panel, in its turn.
class MeetingsTest : public MonkeyFixture
{
protected:
    void SetUp() override
    {
        startWorld({{"G1", "G2"}, {"S1", "S2", "S3", "S4"}});
        world().beginStep(1);
    }

    /// Makes a call and lets it come to where it waits.
    Call &call(Function function, int subject, const Dictionary &config)
    {
        world().beginStep(world().step + 1);
        Call &made = world().make({function, subject, config});
        EXPECT_EQ(rest(), "");
        return made;
    }
    Call &call(int system, const Dictionary &config) { return call(Function::ShowView, system, config); }
    Call &groupCall(int group, const Dictionary &config)
    {
        return call(Function::ShowGroupView, group, config);
    }

    /// Serves events until everything has come to rest; why it did not, otherwise empty.
    std::string rest()
    {
        settle();
        return testsupport::waitUntil([this] { return unrestIn(world()).isEmpty(); })
                   ? std::string()
                   : unrestIn(world()).toStdString();
    }

    int ended() const
    {
        return static_cast<int>(
            std::ranges::count_if(world().calls, [](const auto &call) { return call->hasEnded(); }));
    }

    static bool isUp(const Call &call) { return call.state() == Call::State::WaitsForOperator; }
    static bool isQueued(const Call &call) { return call.state() == Call::State::WaitsForTurn; }
    static bool wasRefused(Call &call)
    {
        return call.hasEnded() && !call.result().isValid() && call.error().code == TooManyInputsForSystem;
    }
};

TEST_F(MeetingsTest, OfFourSystemsOfOneGroupThatAreRefusedAtOnceEachAcknowledgementEndsOne)
{
    for (int system = 0; system < 4; ++system)
        world().make({Function::ShowView, system, twoInputs});
    ASSERT_EQ(rest(), "");
    for (int acknowledged = 1; acknowledged <= 4; ++acknowledged) {
        press("G1", "OK");
        ASSERT_EQ(rest(), "");
        EXPECT_EQ(ended(), acknowledged);
    }
    for (const auto &call : world().calls)
        EXPECT_TRUE(wasRefused(*call));
    EXPECT_FALSE(isOpen("G1"));
}

TEST_F(MeetingsTest, ARefusalWaitsUntilTheHalfFilledPanelOfItsGroupIsAnswered)
{
    Call &asked = groupCall(0, {{"input", Array{"S1", "S2"}}});
    scan("A");
    Call &refused = call(2, twoInputs);
    EXPECT_TRUE(isQueued(refused));
    press("G1", "OK");
    ASSERT_EQ(rest(), "");
    EXPECT_TRUE(isUp(asked));
    scan("B");
    press("G1", "OK");
    ASSERT_EQ(rest(), "");
    ASSERT_TRUE(asked.hasEnded());
    EXPECT_EQ(asked.result(), Value(Dictionary{{"S1", "A"}, {"S2", "B"}, {"clickedButton", "Pass"}}));
    EXPECT_TRUE(isUp(refused));
    press("G1", "OK");
    ASSERT_EQ(rest(), "");
    EXPECT_TRUE(wasRefused(refused));
}

TEST_F(MeetingsTest, AGroupCallThenCallsOfItsSystemsThenAnotherGroupCallAreAnsweredInTheirOrder)
{
    Call &first = groupCall(0, {{"switch", Array{"S1"}}});
    Call &slot = call(0, question);
    Call &other = call(3, question);
    Call &last = groupCall(0, {{"input", Array{"S4"}}});
    EXPECT_TRUE(isUp(first) && isQueued(slot) && isQueued(other) && isQueued(last));
    press("G1", "OK");
    ASSERT_EQ(rest(), "");
    EXPECT_TRUE(first.hasEnded() && isUp(slot) && isUp(other) && isQueued(last));
    press("3", "Yes");
    ASSERT_EQ(rest(), "");
    EXPECT_TRUE(isUp(slot) && other.hasEnded() && isQueued(last));
    press("0", "No");
    ASSERT_EQ(rest(), "");
    ASSERT_TRUE(slot.hasEnded() && isUp(last));
    scan("D");
    press("G1", "OK");
    ASSERT_EQ(rest(), "");
    ASSERT_TRUE(last.hasEnded());
    EXPECT_EQ(slot.result(), Value(false));
    EXPECT_EQ(other.result(), Value(true));
    EXPECT_EQ(last.result(), Value(Dictionary{{"S4", "D"}, {"clickedButton", "Pass"}}));
}

TEST_F(MeetingsTest, ALaterCallOfASystemDoesNotOvertakeAGroupCallThatWaitsForItsTurn)
{
    Call &slot = call(0, question);
    Call &group = groupCall(0, {{"switch", Array{"S1"}}});
    Call &later = call(1, question);
    EXPECT_TRUE(isUp(slot) && isQueued(group) && isQueued(later));
    press("0", "Yes");
    ASSERT_EQ(rest(), "");
    EXPECT_TRUE(isUp(group) && isQueued(later));
    press("G1", "Cancel");
    ASSERT_EQ(rest(), "");
    EXPECT_TRUE(isUp(later));
}

TEST_F(MeetingsTest, TwoCallsOfOneSystemTakeTurnsAndEachGetsItsOwnAnswer)
{
    Call &first = call(1, question);
    Call &second = call(1, {{"input", Array{"SN"}}});
    EXPECT_TRUE(isUp(first) && isQueued(second));
    press("1", "Yes");
    ASSERT_EQ(rest(), "");
    ASSERT_TRUE(first.hasEnded() && isUp(second));
    scan("X");
    press("1", "OK");
    ASSERT_EQ(rest(), "");
    ASSERT_TRUE(second.hasEnded());
    EXPECT_EQ(first.result(), Value(true));
    EXPECT_EQ(second.result(), Value(Dictionary{{"SN", "X"}, {"clickedButton", "Pass"}}));
}

TEST_F(MeetingsTest, AnInterruptionEndsThoseThatWaitForTheirTurnToo)
{
    groupCall(0, {{"input", Array{"S1"}}});
    call(0, question);
    call(1, twoInputs);
    plugin().interruptWaitingCalls();
    ASSERT_TRUE(testsupport::waitUntil([this] { return ended() == 3; }));
    for (const auto &call : world().calls)
        EXPECT_EQ(call->error().code, Interrupted);
    plugin().acceptCalls();
    Call &after = call(2, question);
    EXPECT_TRUE(isUp(after));
    press("2", "Yes");
    EXPECT_EQ(rest(), "");
}

TEST_F(MeetingsTest, ACallOfAnotherGroupWaitsForNobody)
{
    groupCall(0, {{"input", Array{"S1"}}});
    Call &other = groupCall(1, {{"input", Array{"S1"}}});
    EXPECT_TRUE(isUp(other));
}

} // namespace
} // namespace monkey
