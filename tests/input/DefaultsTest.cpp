#include "platform/TextField.h"
#include "tests/support/FieldKeys.h"

#include <QLineEdit>

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Value;
using testsupport::SequencerCall;

namespace {

const Array ThreeSlots{"S1", "S2", "S3"};

class DefaultsTest : public testsupport::FieldKeysFixture
{
protected:
    SequencerCall &askSystem(Dictionary config)
    {
        config.insert("input", Array{"SN"});
        SequencerCall &call = showView(0, config);
        EXPECT_TRUE(waitForPanel("0"));
        return call;
    }
    SequencerCall &askGroup(const Dictionary &defaults, Dictionary config = {})
    {
        config.insert("input", ThreeSlots);
        config.insert("default", defaults);
        SequencerCall &call = showGroup(0, config);
        EXPECT_TRUE(waitForPanel("G1"));
        return call;
    }
    /// What the field offers: its text, as long as all of it is selected and not begun.
    QString offered(const QString &identifier)
    {
        const platform::TextField *view = field(identifier);
        return view->hasBegunEntry() || view->selectedText() != view->stringValue() ? "?"
                                                                                    : view->stringValue();
    }
};

// A slot's panel

TEST_F(DefaultsTest, TheFieldIsFilledInAndSelectedAndIsNoEntryYet)
{
    askSystem({{"default", "A1"}});
    EXPECT_EQ(offered("0-SN"), "A1");
    EXPECT_FALSE(record("0").contains("SN"));
}

TEST_F(DefaultsTest, ReturnConfirmsTheDefault)
{
    SequencerCall &call = askSystem({{"default", "A1"}, {"length", 2}});
    type("\n");
    EXPECT_EQ(record("0").value("SN"), Value("A1"));
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A1"));
}

TEST_F(DefaultsTest, OkConfirmsTheDefault)
{
    SequencerCall &call = askSystem({{"default", "A1"}});
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A1"));
}

TEST_F(DefaultsTest, AScanReplacesTheDefaultWhole)
{
    SequencerCall &call = askSystem({{"default", "A1"}});
    scan("B");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("B"));
}

TEST_F(DefaultsTest, ClearBringsTheDefaultBack)
{
    SequencerCall &call = askSystem({{"default", "A1"}, {"button", Array{"Clear", "OK"}}});
    scan("B");
    press("0", "Clear");
    EXPECT_EQ(offered("0-SN"), "A1");
    EXPECT_FALSE(record("0").contains("SN"));
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A1"));
}

TEST_F(DefaultsTest, APanelWithADefaultGivesTheFocusAwayAndGetsItBackSelected)
{
    askSystem({{"default", "A1"}});
    showView(5, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("5"));
    // Nothing was begun in the first one, so the new panel takes the keys, as always.
    EXPECT_TRUE(field("5-SN")->isFirstResponder());
    scan("X");
    // The first one still waits for its entry.
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
    scan("B");
    EXPECT_EQ(record("0").value("SN"), Value("B"));
}

TEST_F(DefaultsTest, TheDefaultOfANumberAndOfChoicesIsOffered)
{
    SequencerCall &call = askSystem({{"default", 3.5}, {"number", Dictionary{{"min", 3}}}});
    EXPECT_EQ(offered("0-SN"), "3.5");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value(3.5));
    askSystem({{"default", "Red"}, {"choices", Array{"Green", "Red"}}});
    EXPECT_EQ(offered("0-SN"), "Red");
    key(Qt::Key_Down);
    key(Qt::Key_Up);
    key(Qt::Key_Return);
    EXPECT_EQ(record("0").value("SN"), Value("Green"));
}

// A group's panel

TEST_F(DefaultsTest, EachSlotShowsItsDefaultAndTheFieldOffersTheNextOne)
{
    askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    EXPECT_EQ(field("G1-S2")->placeholder(), "B");
    // Shown, and not entered.
    EXPECT_EQ(text("G1-S2"), "");
    EXPECT_EQ(offered("G1-SharedInput"), "A");
    type("\n");
    EXPECT_EQ(text("G1-S1"), "A");
    EXPECT_EQ(offered("G1-SharedInput"), "B");
    EXPECT_FALSE(record("G1").contains("S2"));
}

TEST_F(DefaultsTest, OkConfirmsAllThatAreLeft)
{
    SequencerCall &call = askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    scan("X");
    press("G1", "OK");
    const Dictionary answer = call.result().toMap();
    EXPECT_EQ(answer.value("S1"), Value("X"));
    EXPECT_EQ(answer.value("S2"), Value("B"));
    EXPECT_EQ(answer.value("S3"), Value("C"));
}

TEST_F(DefaultsTest, OkOfAPanelNobodyTouchedConfirmsAll)
{
    SequencerCall &call = askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S3"), Value("C"));
}

TEST_F(DefaultsTest, ASlotWithoutADefaultIsStillAskedFor)
{
    SequencerCall &call = askGroup({{"S2", "B"}});
    EXPECT_EQ(offered("G1-SharedInput"), "");
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    scan("X");
    EXPECT_EQ(offered("G1-SharedInput"), "B");
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(text("G1-S2"), "B");
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
    scan("Z");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S3"), Value("Z"));
}

TEST_F(DefaultsTest, ADefaultThatWasEnteredElsewhereIsRefusedByOkWithItsSlot)
{
    expectError("Invalid input: G1-SharedInput = B");
    expectError("Duplicated input detected");
    SequencerCall &call = askGroup({{"S2", "B"}, {"S3", "C"}});
    scan("B");
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(told("G1"), "S2: \"B\" is refused: it was given before");
    EXPECT_EQ(field("G1-SharedInput")->backgroundColor(), Color::standardRed());
    scan("D");
    EXPECT_EQ(told("G1"), "");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S2"), Value("D"));
}

TEST_F(DefaultsTest, ASlotThatIsSwitchedOffHasNoDefault)
{
    SequencerCall &call = askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    pressSwitch("G1-100-S1");
    EXPECT_EQ(offered("G1-SharedInput"), "B");
    EXPECT_FALSE(field("G1-S1")->isEnabled());
    press("G1", "OK");
    const Dictionary answer = call.result().toMap();
    EXPECT_FALSE(answer.contains("S1"));
    EXPECT_EQ(answer.value("S2"), Value("B"));
}

TEST_F(DefaultsTest, ASlotThatIsSwitchedOnAgainIsOfferedItsDefault)
{
    askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    type("\n");
    pressSwitch("G1-100-S1");
    pressSwitch("G1-100-S1");
    EXPECT_EQ(text("G1-S1"), "");
    EXPECT_EQ(offered("G1-SharedInput"), "A");
}

TEST_F(DefaultsTest, ASlotThatIsOpenedAgainIsOfferedItsDefault)
{
    askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    scan("X");
    click(field("G1-S1"));
    EXPECT_EQ(offered("G1-SharedInput"), "A");
    scan("Y");
    EXPECT_EQ(text("G1-S1"), "Y");
}

TEST_F(DefaultsTest, ClearBringsAllDefaultsBack)
{
    SequencerCall &call = askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    scan("X");
    scan("Y");
    press("G1", "Clear");
    EXPECT_EQ(text("G1-S1"), "");
    EXPECT_EQ(text("G1-SharedInput"), "A");
    // Wherever the focus is now, a scan takes the default's place.
    scan("Z");
    EXPECT_EQ(offered("G1-SharedInput"), "B");
    press("G1", "Clear");
    type("\n");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("A"));
}

TEST_F(DefaultsTest, WhatWasTypedAndNotEndedIsMeantInThePlaceOfTheDefault)
{
    SequencerCall &call = askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    type("X");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("X"));
}

TEST_F(DefaultsTest, OkStoresNoDefaultOverAnEntryThatIsBeingRefused)
{
    expectError("Entry refused");
    SequencerCall &call = askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    type(QString(platform::TextField::MaximumEntryLength + 1, QLatin1Char('9')));
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_FALSE(record("G1").contains("S1"));
    type("\n");
    press("G1", "OK");
    EXPECT_TRUE(call.waitUntilFinished());
}

TEST_F(DefaultsTest, ABegunEntryIsNotReplacedByWhatASwitchOffers)
{
    askGroup({{"S1", "A"}, {"S2", "B"}, {"S3", "C"}});
    type("X");
    pressSwitch("G1-100-S1");
    EXPECT_EQ(text("G1-SharedInput"), "X");
    type("\n");
    EXPECT_EQ(text("G1-S2"), "X");
    EXPECT_EQ(offered("G1-SharedInput"), "C");
}

TEST_F(DefaultsTest, WithoutADefaultNothingIsOffered)
{
    showGroup(0, {{"input", ThreeSlots}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(text("G1-SharedInput"), "");
    EXPECT_EQ(field("G1-S1")->placeholder(), "");
}

} // namespace
