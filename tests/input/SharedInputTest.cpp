#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::TextField;
using platform::Value;

namespace {

const QString method = QStringLiteral("-[InteractiveView checkInput:]");

/// Entries into the shared field of a group's panel, which go to one slot after another.
class SharedInputTest : public testsupport::PluginFixture
{
protected:
    void ask(const Array &slotLabels, int length = 0, int group = 0)
    {
        showGroup(group, {{"input", slotLabels}, {"length", length}});
        ASSERT_TRUE(waitForPanel(QString("G%1").arg(group + 1)));
    }

    TextField *shared() { return field("G1-SharedInput"); }
};

TEST_F(SharedInputTest, AnEntryMovesIntoThePendingSlotsField)
{
    ask({"S1", "S2"}, 3);
    scan("ABC");
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "ABC"}, {"length", 3}}));
    EXPECT_EQ(field("G1-S1")->stringValue(), "ABC");
    EXPECT_EQ(field("G1-S1")->backgroundColor(), Color::white().withAlphaComponent(0.6));
    EXPECT_EQ(shared()->stringValue(), "");
    EXPECT_EQ(shared()->backgroundColor(), Color::white());
    EXPECT_TRUE(shared()->isFirstResponder());
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default,
                           method + ": viewIdentifier: G1, TextField: G1-SharedInput, SharedInput = ABC."));
}

TEST_F(SharedInputTest, SlotsAreFilledInTheMappingsOrderWhateverTheOrderOfTheInputs)
{
    ask({"S4", "S2", "S1", "S3"});
    for (const char *entry : {"1", "2", "3", "4"})
        scan(entry);
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "1"}, {"S2", "2"}, {"S3", "3"}, {"S4", "4"}, {"length", 0}}));
}

TEST_F(SharedInputTest, ABurstOfScansLosesNothing)
{
    ask({"S1", "S2", "S3", "S4"}, 8);
    type("SN000001\nSN000002\nSN000003\nSN000004\n");
    EXPECT_EQ(
        record("G1"),
        (Dictionary{
            {"S1", "SN000001"}, {"S2", "SN000002"}, {"S3", "SN000003"}, {"S4", "SN000004"}, {"length", 8}}));
}

TEST_F(SharedInputTest, SlotsThatAreNotAskedForAreSkipped)
{
    ask({"S2", "S4"});
    scan("A");
    scan("B");
    EXPECT_EQ(record("G1"), (Dictionary{{"S2", "A"}, {"S4", "B"}, {"length", 0}}));
}

TEST_F(SharedInputTest, TheRaisedOpacityIsThatOfThePanel)
{
    plugin().setBackgroundAlpha(0.25);
    ask({"S1"});
    plugin().setBackgroundAlpha(0.4);
    scan("A");
    EXPECT_EQ(field("G1-S1")->backgroundColor(), Color::white().withAlphaComponent(0.5));
}

TEST_F(SharedInputTest, AnEntryOfAWrongLengthIsRejectedInTheSharedField)
{
    ask({"S1"}, 3);
    expectError("Invalid input: G1-SharedInput = AB");
    scan("AB");
    EXPECT_EQ(shared()->backgroundColor(), Color::standardRed());
    EXPECT_EQ(shared()->selectedText(), "AB");
    EXPECT_EQ(field("G1-S1")->stringValue(), "");
    EXPECT_EQ(record("G1"), (Dictionary{{"length", 3}}));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, method + ": Invalid input: G1-SharedInput = AB"));
}

TEST_F(SharedInputTest, ADuplicateIsRejectedAndLoggedWithThePendingSlot)
{
    ask({"S1", "S2"});
    scan("ABC");
    expectError("Duplicated input detected: S2 = ABC");
    expectError("Invalid input: G1-SharedInput = ABC");
    scan("ABC");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, method + ": Duplicated input detected: S2 = ABC"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, method + ": Invalid input: G1-SharedInput = ABC"));
    EXPECT_EQ(shared()->backgroundColor(), Color::standardRed());
    EXPECT_EQ(shared()->selectedText(), "ABC");
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "ABC"}, {"length", 0}}));
}

TEST_F(SharedInputTest, TheSameTextIsAcceptedInTwoGroups)
{
    ask({"S1"}, 0, 0);
    scan("ABC");
    ask({"S1"}, 0, 1);
    click(field("G2-SharedInput"));
    scan("ABC");
    EXPECT_EQ(record("G1").value("S1"), Value("ABC"));
    EXPECT_EQ(record("G2").value("S1"), Value("ABC"));
}

TEST_F(SharedInputTest, WithEverySlotFilledAnEntryStoresNothing)
{
    ask({"S1"}, 3);
    scan("ABC");
    const Dictionary filled = record("G1");
    expectError("Entry refused: XYZ");
    scan("XYZ");
    EXPECT_EQ(record("G1"), filled);
    EXPECT_EQ(field("G1-S1")->stringValue(), "ABC");
    EXPECT_EQ(shared()->backgroundColor(), Color::white());
}

TEST_F(SharedInputTest, WithEverySlotFilledAnEntryOfAWrongLengthIsRejected)
{
    ask({"S1"}, 3);
    scan("ABC");
    expectError("Invalid input: G1-SharedInput = XY");
    scan("XY");
    EXPECT_EQ(shared()->backgroundColor(), Color::standardRed());
}

TEST_F(SharedInputTest, WithEverySlotFilledADuplicateIsRejectedWithoutASlotsName)
{
    ask({"S1"});
    scan("ABC");
    expectError("Duplicated input detected: (null) = ABC");
    expectError("Invalid input: G1-SharedInput = ABC");
    scan("ABC");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, method + ": Duplicated input detected: (null) = ABC"));
}

TEST_F(SharedInputTest, WithEverySlotFilledASlotsOwnFieldHasNothingToDo)
{
    ask({"S1", "S2"}, 3);
    scan("ABC");
    scan("DEF");
    const Dictionary filled = record("G1");
    EXPECT_TRUE(rooms().entries.checkInput(field("G1-S2")));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, "No slot pending input: G1-S2"));
    EXPECT_EQ(timesLoggedFrom(method + ": viewIdentifier: G1, TextField: G1-S2"), 0);
    EXPECT_EQ(record("G1"), filled);
}

TEST_F(SharedInputTest, WhenThePendingSlotsFieldIsDisabledNothingIsStored)
{
    ask({"S1", "S2"});
    field("G1-S1")->setEnabled(false);
    expectError("Entry refused: ABC");
    scan("ABC");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, "Slot view not found, or not enabled: S1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"length", 0}}));
    EXPECT_EQ(shared()->stringValue(), "ABC");
}

TEST_F(SharedInputTest, WhenThePendingSlotHasNoFieldNothingIsStored)
{
    ask({"S1", "S2"});
    delete field("G1-S1");
    expectError("Entry refused: ABC");
    scan("ABC");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, "Slot view not found, or not enabled: S1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"length", 0}}));
}

TEST_F(SharedInputTest, WithoutARecordOneIsMadeEvenWhenTheSlotHasNoField)
{
    ask({"S1", "S2"});
    rooms().records.restore({});
    field("G1-S1")->setEnabled(false);
    expectError("Entry refused: ABC");
    scan("ABC");
    EXPECT_EQ(plugin().savedData(), (Dictionary{{"G1", Dictionary{}}}));
}

TEST_F(SharedInputTest, ARecordWithoutALengthGetsNone)
{
    ask({"S1", "S2"}, 3);
    rooms().records.restore({{"G1", Dictionary{}}});
    scan("ABCDE");
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "ABCDE"}}));
}

TEST_F(SharedInputTest, TheLastSlotsEntryLeavesNothingPending)
{
    auto &call = showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    scan("B");
    EXPECT_TRUE(shared()->isFirstResponder());
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"S1", "A"}, {"S2", "B"}, {"clickedButton", "Pass"}}));
}

TEST_F(SharedInputTest, TwoGroupsAreAnsweredInInterleavedOrder)
{
    auto &first = showGroup(0, {{"input", Array{"S1", "S2"}}});
    auto &second = showGroup(1, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1") && waitForPanel("G2"));
    for (const char *entry : {"A", "B"}) {
        click(field("G1-SharedInput"));
        scan(QString("1") + entry);
        click(field("G2-SharedInput"));
        scan(QString("2") + entry);
    }
    press("G2", "OK");
    EXPECT_EQ(second.result(), Value(Dictionary{{"S1", "2A"}, {"S2", "2B"}, {"clickedButton", "Pass"}}));
    EXPECT_FALSE(first.finished());
    press("G1", "OK");
    EXPECT_EQ(first.result(), Value(Dictionary{{"S1", "1A"}, {"S2", "1B"}, {"clickedButton", "Pass"}}));
}

} // namespace
