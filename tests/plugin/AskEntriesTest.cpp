#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Value;
using testsupport::SequencerCall;

namespace {

Dictionary asking(Dictionary config)
{
    config.insert("input", Array{"SN"});
    return config;
}

Dictionary askingTwo(Dictionary config)
{
    config.insert("input", Array{"S1", "S2"});
    return config;
}

/// What a call may ask of its entries besides their length, with real keys.
class AskEntriesTest : public testsupport::PluginFixture
{
protected:
    ~AskEntriesTest() override { KVKConfigEngine::sharedConfigEngine()->setLocale("C"); }

    SequencerCall &askSystem(int system, const Dictionary &config)
    {
        SequencerCall &call = showView(system, asking(config));
        EXPECT_TRUE(waitForPanel(QString::number(system)));
        return call;
    }
    SequencerCall &askGroup(int group, const Dictionary &config)
    {
        SequencerCall &call = showGroup(group, askingTwo(config));
        EXPECT_TRUE(waitForPanel(QString("G%1").arg(group + 1)));
        return call;
    }
    QString told(const QString &panelKey) { return field(panelKey + "-StatusLine")->stringValue(); }
    void enter(const QString &identifier, const QString &text)
    {
        ASSERT_TRUE(field(identifier)->becomeFirstResponder());
        scan(text);
    }
};

TEST_F(AskEntriesTest, ATextOfAnotherFormIsRefusedInRedAndInWords)
{
    expectError("Invalid input: 0-SN = AB");
    SequencerCall &call = askSystem(0, {{"pattern", "[0-9]+"}});
    scan("AB");
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::standardRed());
    EXPECT_EQ(told("0"), "\"AB\" is refused: it does not have the form that is asked for");
    EXPECT_EQ(record("0"), (Dictionary{{"length", 0}}));
    scan("12");
    EXPECT_EQ(told("0"), "");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("12"));
}

TEST_F(AskEntriesTest, OkDoesNotEndAPanelWhoseEntryHasAnotherForm)
{
    expectError("Invalid input: 0-SN = AB");
    SequencerCall &call = askSystem(0, {{"pattern", "[0-9]+"}});
    type("AB");
    press("0", "OK");
    EXPECT_TRUE(isOpen("0"));
    EXPECT_FALSE(call.finished());
    EXPECT_NE(told("0"), "");
}

TEST_F(AskEntriesTest, AHintStandsBeforeTheReason)
{
    expectError("Invalid input: 0-SN = AB");
    askSystem(0, {{"pattern", "[0-9]+"}, {"hint", "Digits alone"}});
    scan("AB");
    EXPECT_EQ(told("0"), "Digits alone (it does not have the form that is asked for)");
}

TEST_F(AskEntriesTest, AHintAloneTellsOfTheLength)
{
    expectError("Invalid input: 0-SN = AB");
    askSystem(0, {{"length", 3}, {"hint", "Three letters"}});
    scan("AB");
    EXPECT_EQ(told("0"), "Three letters (it has 2 characters instead of 3)");
}

TEST_F(AskEntriesTest, ClearTakesTheReasonAway)
{
    expectError("Invalid input: G1-SharedInput = x");
    askGroup(0, {{"pattern", "[0-9]+"}});
    scan("x");
    ASSERT_NE(told("G1"), "");
    press("G1", "Clear");
    EXPECT_EQ(told("G1"), "");
}

TEST_F(AskEntriesTest, EachSlotHasTheFormThatTheTableNames)
{
    expectError("Invalid input: G1-SharedInput = 1");
    SequencerCall &call = askGroup(0, {{"pattern", Dictionary{{"S2", "[A-Z]+"}}}});
    scan("1");
    EXPECT_EQ(field("G1-S1")->stringValue(), "1");
    scan("1");
    EXPECT_EQ(field("G1-S2")->stringValue(), "");
    scan("B");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S2"), Value("B"));
}

TEST_F(AskEntriesTest, WithoutTheNewKeysThereIsNoStatusLine)
{
    askGroup(0, {});
    askSystem(4, {{"length", 3}});
    EXPECT_EQ(field("G1-StatusLine"), nullptr);
    EXPECT_EQ(field("4-StatusLine"), nullptr);
}

TEST_F(AskEntriesTest, TheAnswerIsANumber)
{
    KVKConfigEngine::sharedConfigEngine()->setLocale("de_DE");
    SequencerCall &call = askGroup(0, {{"number", Dictionary{{"min", 3}, {"max", 4}}}});
    scan("3,5");
    EXPECT_EQ(field("G1-S1")->stringValue(), "3,5");
    scan("3.5");
    press("G1", "OK");
    const Dictionary answer = call.result().toMap();
    EXPECT_EQ(answer.value("S1"), Value(3.5));
    EXPECT_EQ(answer.value("S1").metaType(), QMetaType::fromType<double>());
    EXPECT_EQ(answer.value("S2"), Value(3.5));
    EXPECT_EQ(plugin().getData(1, nullptr), Value(3.5));
}

TEST_F(AskEntriesTest, ANumberOutOfItsRangeIsRefusedWithTheRange)
{
    expectError("Invalid input: 0-SN = 5");
    SequencerCall &call = askSystem(0, {{"number", Dictionary{{"min", 3}, {"max", 4}, {"unit", "V"}}}});
    scan("5");
    EXPECT_EQ(told("0"), "\"5\" is refused: it must be 3 to 4 V");
    scan("4 V");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value(4.0));
}

TEST_F(AskEntriesTest, ABeginningStandsForItsChoice)
{
    SequencerCall &call = askSystem(0, {{"choices", Array{"Green", "Red"}}});
    scan("g");
    EXPECT_EQ(field("0-SN")->stringValue(), "Green");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("Green"));
}

TEST_F(AskEntriesTest, TheSameChoiceCountsInTwoSlots)
{
    SequencerCall &call = askGroup(0, {{"choices", Array{"Green", "Red"}}});
    scan("Red");
    scan("red");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S2"), Value("Red"));
}

TEST_F(AskEntriesTest, WhatAnotherOpenPanelHoldsIsRefusedInTheStation)
{
    expectError("Invalid input: 4-SN = A");
    expectError("Duplicated input detected");
    askGroup(0, {});
    scan("A");
    SequencerCall &call = askSystem(4, {{"unique", "station"}});
    enter("4-SN", "A");
    EXPECT_EQ(told("4"), "\"A\" is refused: it was given before");
    enter("4-SN", "B");
    // "OK" looks at the entry again, which stands there already.
    press("4", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("B"));
}

TEST_F(AskEntriesTest, WithoutTheKeyAnotherPanelsEntryCounts)
{
    askGroup(0, {});
    scan("A");
    SequencerCall &call = askSystem(4, {});
    enter("4-SN", "A");
    press("4", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A"));
}

TEST_F(AskEntriesTest, WhatWasAnsweredSinceRunIsRefusedInTheRun)
{
    expectError("Invalid input: 1-SN = A");
    expectError("Duplicated input detected");
    SequencerCall &first = askSystem(0, {});
    scan("A");
    press("0", "OK");
    ASSERT_TRUE(first.waitUntilFinished());
    askSystem(1, {{"unique", "run"}});
    scan("A");
    EXPECT_EQ(told("1"), "\"A\" is refused: it was given before");
}

TEST_F(AskEntriesTest, ANewRunKnowsNoneOfTheAnswersOfTheLast)
{
    SequencerCall &first = askSystem(0, {});
    scan("A");
    press("0", "OK");
    ASSERT_TRUE(first.waitUntilFinished());
    plugin().acceptCalls();
    SequencerCall &second = askSystem(1, {{"unique", "run"}});
    scan("A");
    press("1", "OK");
    EXPECT_EQ(second.result().toMap().value("SN"), Value("A"));
}

TEST_F(AskEntriesTest, WhatWasCanceledWasNotGiven)
{
    SequencerCall &first = askGroup(0, {});
    scan("A");
    press("G1", "Cancel");
    ASSERT_TRUE(first.waitUntilFinished());
    SequencerCall &second = askSystem(4, {{"unique", "run"}});
    scan("A");
    press("4", "OK");
    EXPECT_EQ(second.result().toMap().value("SN"), Value("A"));
}

TEST_F(AskEntriesTest, ARefusedKeyIsShownAndAcknowledged)
{
    expectError("Value for key 'pattern'");
    SequencerCall &call = showView(0, asking({{"pattern", 5}}));
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_FALSE(call.finished());
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error().code, 110);
}

TEST_F(AskEntriesTest, ARefusedKeyOfAMessageIsShownAndAcknowledgedToo)
{
    expectError("Value for key 'timeLimit'");
    SequencerCall &call = showGroup(0, {{"message", "Close the lid"}, {"timeLimit", 5}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error().code, 119);
}

} // namespace
