#include "platform/MainQueue.h"
#include "platform/TextField.h"
#include "presentation/TimeBar.h"
#include "tests/support/GatedFunction.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <QEvent>

using interactive::TimeBar;
using platform::Array;
using platform::Dictionary;
using platform::Value;
using testsupport::GatedFunction;
using testsupport::SequencerCall;

namespace {

/// Longer than any test takes: the time is not to end.
constexpr double Long = 3600.0;
/// Shorter than anybody presses.
constexpr double Short = 0.05;
/// Enough for an entry, also where other programs keep the processors busy.
constexpr double Typing = 1.5;

/// `timeLimit`: a panel ends by itself, with real keys and the real clock.
class TimeLimitTest : public testsupport::PluginFixture
{
protected:
    TimeBar *bar(const QString &panelKey)
    {
        for (platform::View *view : testsupport::descendants(rooms().views.rootView())) {
            auto *found = qobject_cast<TimeBar *>(view);
            if (found && found->identifier().text() == panelKey + "-TimeBar")
                return found;
        }
        return nullptr;
    }
    static platform::Error timeOver(const QString &seconds, const QString &panelKey,
                                    const Dictionary &additions)
    {
        return {"InteractivePluginErrorDomain", 406,
                QString("-[InteractiveView showInteractiveView:systemIndex:config:error:]: The panel was not "
                        "answered within its time limit of %1 s: %2")
                    .arg(seconds, panelKey),
                additions};
    }
};

TEST_F(TimeLimitTest, AQuestionEndsWithAnErrorAndNoAnswer)
{
    SequencerCall &call =
        showView(0, {{"message", "Is it on?"}, {"button", Array{"No", "Yes"}}, {"timeLimit", Short}});
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error(), timeOver("0.05", "0", {}));
    EXPECT_FALSE(isOpen("0"));
    EXPECT_EQ(bar("0"), nullptr);
}

TEST_F(TimeLimitTest, WhatWasEnteredIsKeptInTheError)
{
    SequencerCall &call = showGroup(0, {{"input", Array{"S1", "S2"}}, {"length", 1}, {"timeLimit", Typing}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error(), timeOver("1.5", "G1", {{"answer", Dictionary{{"S1", "A"}}}}));
    EXPECT_EQ(record("G1"), Dictionary()) << "what was half entered is no answer";
}

TEST_F(TimeLimitTest, TheButtonOfAPressThatCameTooLateIsNotAmongThem)
{
    SequencerCall &call = showGroup(0, {{"input", Array{"S1", "S2"}}, {"timeLimit", Typing}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    // As a press leaves it that finds nothing missing, and the wait ended when it comes to that.
    ASSERT_TRUE(rooms().records.press("G1", "Pass", rooms().records.asking("G1")));
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error().additions, (Dictionary{{"answer", Dictionary{{"S1", "A"}}}}));
}

TEST_F(TimeLimitTest, WithNothingEnteredTheAnswerIsEmpty)
{
    SequencerCall &call = showView(0, {{"input", Array{"SN"}}, {"timeLimit", Short}});
    EXPECT_EQ(call.error(), timeOver("0.05", "0", {{"answer", Dictionary()}}));
}

TEST_F(TimeLimitTest, ASwitchPanelKeepsItsStates)
{
    for (const Array &switches : {Array{"S1", "S2"}, Array{"S1"}}) {
        SequencerCall &call = showGroup(0, {{"switch", switches}, {"timeLimit", Short}});
        EXPECT_EQ(call.result(), Value());
        EXPECT_EQ(call.error().code, 406);
        const Dictionary answer = call.error().additions.value("answer").toMap();
        for (const Value &slot : switches)
            EXPECT_EQ(answer.value(slot.toString()).toLongLong(), 1);
    }
}

TEST_F(TimeLimitTest, AnEntryThatIsStillBeingCheckedIsNotAmongThem)
{
    auto gate = std::make_shared<GatedFunction>([](const Value &, const QString &) { return Array{true}; });
    SequencerCall &call =
        showGroup(0, {{"input", Array{"S1", "S2"}},
                      {"timeLimit", 1},
                      {"validate", Value::fromValue<std::shared_ptr<platform::Callback>>(gate)}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    ASSERT_TRUE(testsupport::waitUntil([&] { return !rooms().checks.arePending("G1"); }));
    gate->close();
    scan("B");
    // The function runs on; the panel does not wait for it.
    EXPECT_TRUE(waitForPanelGone("G1"));
    EXPECT_FALSE(call.finished());
    gate->open();
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error().code, 406);
    EXPECT_EQ(call.error().additions, (Dictionary{{"answer", Dictionary{{"S1", "A"}}}}));
}

TEST_F(TimeLimitTest, AnAnswerInTimeIsAnAnswer)
{
    SequencerCall &call = showView(0, {{"input", Array{"SN"}}, {"timeLimit", Long}});
    ASSERT_TRUE(waitForPanel("0"));
    ASSERT_NE(bar("0"), nullptr);
    scan("A");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A"));
    EXPECT_FALSE(call.error().isPresent());
    EXPECT_EQ(bar("0"), nullptr);
}

TEST_F(TimeLimitTest, TheBarStandsAlongTheUpperEdge)
{
    showGroup(0, {{"input", Array{"S1"}}, {"timeLimit", Long}});
    showView(4, {{"input", Array{"SN"}}, {"timeLimit", Long}});
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_TRUE(waitForPanel("4"));
    const platform::View *group = panel("G1");
    ASSERT_NE(bar("G1"), nullptr);
    EXPECT_EQ(bar("G1")->frame(),
              platform::Rect(0.0, group->frame().height() - 3.0, group->frame().width(), 3.0));
    ASSERT_NE(bar("4"), nullptr);
    EXPECT_EQ(bar("4")->superview(), panel("4"));
    EXPECT_GT(bar("4")->frame().y(), panel("4")->frame().height() - 12.0);
    EXPECT_EQ(bar("4")->accessibleName(), "Time left: 3600 s");
    window().resize(1500, 900);
    EXPECT_TRUE(testsupport::waitUntil([&] { return group->frame().width() > 1400.0; }));
    EXPECT_EQ(bar("G1")->frame().width(), group->frame().width()) << "it follows the band's width";
}

TEST_F(TimeLimitTest, WithoutTheKeyThereIsNoBar)
{
    showGroup(0, {{"input", Array{"S1"}}});
    showView(4, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_TRUE(waitForPanel("4"));
    EXPECT_EQ(bar("G1"), nullptr);
    EXPECT_EQ(bar("4"), nullptr);
}

TEST_F(TimeLimitTest, LookingAtAnotherWindowDoesNotStopIt)
{
    SequencerCall &call = showView(0, {{"input", Array{"SN"}}, {"timeLimit", 0.3}});
    ASSERT_TRUE(waitForPanel("0"));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return other.isActiveWindow(); }));
    EXPECT_EQ(call.error().code, 406);
}

TEST_F(TimeLimitTest, TheTimeOfACallThatQueuesHasNotBegun)
{
    showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    SequencerCall &queued = showView(0, {{"input", Array{"SN"}}, {"timeLimit", Short}});
    ASSERT_TRUE(waitsForTurn(1));
    // Longer than the limit: another panel's time runs down meanwhile.
    SequencerCall &elsewhere = showView(4, {{"input", Array{"SN"}}, {"timeLimit", 0.2}});
    ASSERT_TRUE(elsewhere.waitUntilFinished());
    EXPECT_FALSE(queued.finished());
    press("G1", "Cancel");
    EXPECT_EQ(queued.error().code, 406);
}

TEST_F(TimeLimitTest, OfAPressAndTheEndInTheSameMomentExactlyOneWins)
{
    int answers = 0;
    for (int i = 0; i < 20; ++i) {
        SequencerCall &call = showView(0, {{"message", "?"}, {"button", Array{"Yes"}}, {"timeLimit", 0.06}});
        ASSERT_TRUE(waitForPanel("0"));
        const TimeBar *running = bar("0");
        // As near to the end as a press can be, a little earlier or later each time.
        const auto moment = running->end() - std::chrono::microseconds(500 * (10 - i));
        platform::Button *yes = button("0", "Yes");
        while (TimeBar::Clock::now() < moment) {
        }
        click(yes);
        settle();
        ASSERT_TRUE(call.waitUntilFinished());
        const bool answered = call.result() == Value(true);
        answers += answered ? 1 : 0;
        ASSERT_NE(answered, call.error().code == 406);
        ASSERT_FALSE(rooms().keys.isHolding());
    }
    RecordProperty("answers", answers);
}

TEST_F(TimeLimitTest, TheNextCallIsNotEndedByTheTimeOfTheLast)
{
    SequencerCall &first = showView(0, {{"input", Array{"SN"}}, {"timeLimit", Short}});
    ASSERT_TRUE(first.waitUntilFinished());
    SequencerCall &second = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    press("0", "OK");
    EXPECT_EQ(second.result().toMap().value("SN"), Value("A"));
}

} // namespace
