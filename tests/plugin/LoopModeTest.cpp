#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

#include <stdexcept>
#include <vector>

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

/// Loop mode as a sequence sees it: setLoop, getLoopConfig and isLoopFinished.
class LoopModeTest : public testsupport::PluginFixture
{
protected:
    Value isLoopFinished(const Value &group)
    {
        interactive::InteractiveView &target = plugin();
        return onSequencer([&target, group](Error *error) { return target.isLoopFinished(group, error); })
            .result();
    }

    Dictionary loopRecord() { return plugin().savedData().value("Loop").toMap(); }
};

TEST_F(LoopModeTest, WithoutALoopTheConfigurationIsEmpty)
{
    Error error;
    EXPECT_EQ(plugin().getLoopConfig(&error), Dictionary());
    EXPECT_FALSE(error.isPresent());
    EXPECT_FALSE(plugin().savedData().contains("Loop"));
}

TEST_F(LoopModeTest, TheConfigurationIsTheLoopRecord)
{
    setLoop(3);
    EXPECT_EQ(plugin().getLoopConfig(nullptr),
              (Dictionary{{"LoopMax", 3}, {"LoopCount_0", 0}, {"LoopCount_1", 0}}));
    EXPECT_EQ(plugin().getLoopConfig(nullptr), loopRecord());
}

TEST_F(LoopModeTest, WithoutALoopAGroupIsFinishedAtOnceAndItsAnswersGo)
{
    answerGroup(0, {"S1"}, {"A"});
    answerGroup(1, {"S1"}, {"B"});
    EXPECT_EQ(isLoopFinished(0), Value(1));
    EXPECT_EQ(plugin().savedData(), (Dictionary{{"G2", Dictionary{{"S1", "B"}, {"clickedButton", "Pass"}}}}));
}

TEST_F(LoopModeTest, TheHostIsToldOfEachPass)
{
    QStringList told;
    KVKExtensionStatusRelay *relay = KVKExtensionStatusRelay::sharedStatusRelay();
    relay->setPassHandler([&](qint64 maximum, const QList<qint64> &finished) {
        QStringList counts;
        for (const qint64 count : finished)
            counts.append(QString::number(count));
        told.append(QStringLiteral("%1: %2").arg(maximum).arg(counts.join(' ')));
    });
    setLoop(2);
    isLoopFinished(1);
    isLoopFinished(0);
    isLoopFinished(1);
    relay->setPassHandler({});
    EXPECT_EQ(told, (QStringList{"2: 0 0", "2: 0 1", "2: 1 1", "2: 1 2"}));
}

TEST_F(LoopModeTest, ThreePassesAreTwoMoreAndThenTheEnd)
{
    setLoop(3);
    answerGroup(0, {"S1"}, {"A"});
    const Dictionary answers{{"S1", "A"}, {"clickedButton", "Pass"}};

    EXPECT_EQ(isLoopFinished(0), Value(0));
    EXPECT_EQ(loopRecord().value("LoopCount_0"), Value(1));
    EXPECT_EQ(isLoopFinished(0), Value(0));
    EXPECT_EQ(loopRecord().value("LoopCount_0"), Value(2));
    EXPECT_EQ(record("G1"), answers);
    EXPECT_EQ(isLoopFinished(0), Value(1));
    EXPECT_EQ(loopRecord().value("LoopCount_0"), Value(3));
    EXPECT_FALSE(plugin().savedData().contains("G1"));
}

TEST_F(LoopModeTest, WhatASystemAnsweredBeforeTheLoopIsAskedAgainInIt)
{
    auto &before = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    press("0", "OK");
    // Its answer is one of the loop when the loop begins before the call has ended.
    ASSERT_EQ(before.result().toMap().value("SN"), Value("A"));
    rooms().records.setLoopEnabled(true);
    auto &call = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("B");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("B"));
}

TEST_F(LoopModeTest, TheCountIsNotResetAtTheEnd)
{
    setLoop(3);
    for (int i = 0; i < 3; ++i)
        isLoopFinished(0);
    EXPECT_EQ(isLoopFinished(0), Value(1));
    EXPECT_EQ(loopRecord().value("LoopCount_0"), Value(4));
}

TEST_F(LoopModeTest, EachGroupHasACountOfItsOwn)
{
    setLoop(2);
    EXPECT_EQ(isLoopFinished(0), Value(0));
    EXPECT_EQ(isLoopFinished(1), Value(0));
    EXPECT_EQ(isLoopFinished(1), Value(1));
    EXPECT_EQ(loopRecord(), (Dictionary{{"LoopMax", 2}, {"LoopCount_0", 1}, {"LoopCount_1", 2}}));
}

TEST_F(LoopModeTest, OnePassLeavesLoopModeOffAndIsFinishedAtTheFirstQuestion)
{
    EXPECT_EQ(setLoop(1), Value(1));
    EXPECT_EQ(loopRecord().value("LoopMax"), Value(1));
    EXPECT_FALSE(plugin().isLoopEnabled());
    EXPECT_EQ(isLoopFinished(0), Value(1));
}

TEST_F(LoopModeTest, TwoPassesTurnLoopModeOn)
{
    EXPECT_EQ(setLoop(2), Value(1));
    EXPECT_TRUE(plugin().isLoopEnabled());
    setLoop(0);
    EXPECT_FALSE(plugin().isLoopEnabled());
}

TEST_F(LoopModeTest, SettingTheLoopResetsAllCountsAndShowsTheNumber)
{
    setLoop(5);
    isLoopFinished(0);
    isLoopFinished(1);
    isLoopFinished(1);
    EXPECT_EQ(setLoop(3), Value(1));
    EXPECT_EQ(loopRecord(), (Dictionary{{"LoopMax", 3}, {"LoopCount_0", 0}, {"LoopCount_1", 0}}));
    EXPECT_TRUE(plugin().isLoopEnabled());
    EXPECT_EQ(loopField()->stringValue(), "3");
}

TEST_F(LoopModeTest, AWholeDecimalNumberIsShownAndReadAsTheInteger)
{
    setLoop(3.0);
    EXPECT_EQ(loopField()->stringValue(), "3");
    EXPECT_EQ(loopRecord().value("LoopMax"), Value(3));
}

TEST_F(LoopModeTest, SettingTheLoopNeverGivesAnError)
{
    interactive::InteractiveView &target = plugin();
    auto &call = onSequencer([&target](Error *error) { return target.setLoop(-4, error); });
    EXPECT_EQ(call.result(), Value(1));
    EXPECT_FALSE(call.error().isPresent());
    EXPECT_EQ(loopRecord().value("LoopMax"), Value(-4));
    EXPECT_FALSE(plugin().isLoopEnabled());
}

TEST_F(LoopModeTest, BeforeTheViewIsLoadedThereIsNothingToSet)
{
    interactive::InteractiveView unloaded;
    EXPECT_EQ(unloaded.setLoop(3, nullptr), Value(0));
}

TEST_F(LoopModeTest, ASettingOfTheLoopIsLoggedByTheFieldsAction)
{
    setLoop(3);
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default, "-[InteractiveView configLoop:]: viewIdentifier Loop value: 3"));
}

TEST_F(LoopModeTest, AQuestionForTheEndIsLoggedWithAllAnswers)
{
    answerGroup(0, {"S1"}, {"A"});
    isLoopFinished(0);
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, "-[InteractiveView isLoopFinished:error:]: data: "
                                               "{G1 = {S1 = A; clickedButton = Pass}}"));
}

TEST_F(LoopModeTest, TheEndOfAGroupThatDoesNotExistIsARangeException)
{
    interactive::InteractiveView &target = plugin();
    const QString text = onSequencer([&target](Error *error) {
                             return target.isLoopFinished(7, error);
                         }).thrown<std::out_of_range>();
    EXPECT_TRUE(text.contains("7")) << text.toStdString();
}

TEST_F(LoopModeTest, NoPassIsLostWhenTheSequencesOfAllGroupsAskAtTheSameMoment)
{
    setLoop(100000);
    interactive::InteractiveView &target = plugin();
    std::vector<testsupport::SequencerCall *> calls;
    for (int i = 0; i < 8; ++i) {
        calls.push_back(&onSequencer([&target, i](Error *error) {
            for (int pass = 0; pass < 200; ++pass)
                target.isLoopFinished(i % 2, error);
            return Value(true);
        }));
    }
    for (testsupport::SequencerCall *call : calls)
        EXPECT_EQ(call->result(), Value(true));
    EXPECT_EQ(loopRecord(), (Dictionary{{"LoopMax", 100000}, {"LoopCount_0", 800}, {"LoopCount_1", 800}}));
}

TEST_F(LoopModeTest, ALoopOfThreePassesAsksTheOperatorOnce)
{
    setLoop(3);
    interactive::InteractiveView &target = plugin();
    auto &sequence = onSequencer([&target](Error *error) {
        Array answers;
        do {
            answers.append(target.showGroupView(0, {{"input", Array{"S1"}}}, error).toMap().value("S1"));
        } while (target.isLoopFinished(0, error) == Value(0));
        return Value(answers);
    });
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    press("G1", "OK");
    EXPECT_EQ(sequence.result(), Value(Array{"A", "A", "A"}));
    EXPECT_EQ(timesLoggedFrom("Entered: "), 1);
    EXPECT_FALSE(plugin().savedData().contains("G1"));
}

TEST_F(LoopModeTest, WithoutItsFieldTheMaximumIsStoredAsGivenAndNothingElseChanges)
{
    setLoop(1);
    isLoopFinished(0);
    isLoopFinished(0);
    delete loopField();
    EXPECT_EQ(setLoop(3.0), Value(1));
    EXPECT_EQ(loopRecord(), (Dictionary{{"LoopMax", 3.0}, {"LoopCount_0", 2}, {"LoopCount_1", 0}}));
    EXPECT_FALSE(plugin().isLoopEnabled());
}

TEST_F(LoopModeTest, TheAnswersAreNumbers)
{
    EXPECT_TRUE(platform::isNumber(setLoop(2)));
    EXPECT_TRUE(platform::isNumber(isLoopFinished(0)));
    EXPECT_TRUE(platform::isNumber(isLoopFinished(0)));
}

TEST_F(LoopModeTest, AskingForTheEndNeverGivesAnError)
{
    interactive::InteractiveView &target = plugin();
    auto &call = onSequencer([&target](Error *error) { return target.isLoopFinished(1, error); });
    EXPECT_EQ(call.result(), Value(1));
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(LoopModeTest, AGroupThatDoesNotExistIsCountedUntilItsEnd)
{
    setLoop(2);
    EXPECT_EQ(isLoopFinished(7), Value(0));
    EXPECT_EQ(loopRecord().value("LoopCount_7"), Value(1));
    interactive::InteractiveView &target = plugin();
    const QString text = onSequencer([&target](Error *error) {
                             return target.isLoopFinished(7, error);
                         }).thrown<std::out_of_range>();
    EXPECT_EQ(text, "-[InteractiveView isLoopFinished:error:]: group number 7 is out of range, there are 2 "
                    "(0 to 1)");
    EXPECT_EQ(loopRecord().value("LoopCount_7"), Value(2));
}

TEST_F(LoopModeTest, ANumberWithAFractionIsShownAsItIsAndCountsAsItsWholePart)
{
    setLoop(2.5);
    EXPECT_EQ(loopField()->stringValue(), "2.5");
    EXPECT_EQ(loopRecord().value("LoopMax"), Value(2));
    EXPECT_TRUE(plugin().isLoopEnabled());
}

TEST_F(LoopModeTest, SettingTheLoopTakesTheFocusFromNoEntry)
{
    showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    type("12");
    setLoop(3);
    type("34");
    EXPECT_EQ(field("0-SN")->stringValue(), "1234");
}

TEST_F(LoopModeTest, NoPassIsLostWhileTheMaximumIsBeingSet)
{
    start();
    // Without the field setting the maximum resets no count.
    delete loopField();
    setLoop(100000);
    interactive::InteractiveView &target = plugin();
    auto &counting = onSequencer([&target](Error *error) {
        for (int pass = 0; pass < 500; ++pass)
            target.isLoopFinished(0, error);
        return Value(true);
    });
    auto &setting = onSequencer([&target](Error *error) {
        for (int i = 0; i < 500; ++i)
            target.setLoop(100000 + i, error);
        return Value(true);
    });
    ASSERT_TRUE(counting.waitUntilFinished() && setting.waitUntilFinished());
    EXPECT_EQ(loopRecord(), (Dictionary{{"LoopMax", 100499}, {"LoopCount_0", 500}}));
}

} // namespace
