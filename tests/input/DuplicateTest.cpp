#include "input/EntryRules.h"
#include "tests/input/InputRoom.h"
#include "tests/support/PluginFixture.h"

using interactive::entries::isDuplicate;
using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Identifier;

namespace {

const QString search = QStringLiteral("-[InteractiveView checkDuplicatedInput:withIdentifier:]");

TEST(DuplicateRule, AStoredTextIsADuplicate)
{
    const Dictionary record{{"S1", "ABC"}, {"length", 3}};
    EXPECT_TRUE(isDuplicate("ABC", record));
    EXPECT_FALSE(isDuplicate("DEF", record));
}

TEST(DuplicateRule, TheCaseAndEveryCharacterCount)
{
    const Dictionary record{{"S1", "ABC"}};
    EXPECT_FALSE(isDuplicate("abc", record));
    EXPECT_FALSE(isDuplicate("ABC ", record));
    EXPECT_FALSE(isDuplicate("AB", record));
}

TEST(DuplicateRule, TheEmptyTextIsNone)
{
    EXPECT_FALSE(isDuplicate("", {{"S1", ""}}));
}

TEST(DuplicateRule, TheLengthIsNoEntry)
{
    EXPECT_FALSE(isDuplicate("8", {{"length", 8}}));
}

TEST(DuplicateRule, ThePressedButtonIsComparedLikeAnEntry)
{
    EXPECT_TRUE(isDuplicate("Pass", {{"clickedButton", "Pass"}}));
}

TEST(DuplicateRule, AStoredNumberIsComparedAsItDescribesItself)
{
    EXPECT_TRUE(isDuplicate("8", {{"S1", 8.0}}));
}

/// The search where there is no record, which an entry always makes.
class DuplicateSearchTest : public testsupport::InputRoom
{};

TEST_F(DuplicateSearchTest, WithoutARecordNothingIsADuplicateAndTheComparisonIsLoggedAllTheSame)
{
    EXPECT_TRUE(entries.checkDuplicatedInput("ABC", Identifier("G1")));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, search + " saved data: {}, G1"));
}

/// Which texts an operator may not enter because the group's panel already holds them.
class DuplicateTest : public testsupport::PluginFixture
{
protected:
    void askGroup(int length = 0)
    {
        showGroup(0, {{"input", Array{"S1", "S2"}}, {"length", length}});
        ASSERT_TRUE(waitForPanel("G1"));
        click(field("G1-SharedInput"));
    }
};

TEST_F(DuplicateTest, WhatOtherPanelsHoldDoesNotCount)
{
    showGroup(1, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G2"));
    scan("ABC");
    askGroup();
    scan("ABC");
    EXPECT_EQ(record("G2").value("S1"), platform::Value("ABC"));
    EXPECT_EQ(record("G1").value("S1"), platform::Value("ABC"));
}

TEST_F(DuplicateTest, ASingleSystemsPanelIsNeverChecked)
{
    showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("ABC");
    scan("ABC");
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::white());
    EXPECT_EQ(record("0").value("SN"), platform::Value("ABC"));
    EXPECT_EQ(timesLoggedFrom(search), 0);
}

TEST_F(DuplicateTest, TheEmptyTextIsNeverADuplicate)
{
    askGroup();
    scan("");
    scan("");
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", ""}, {"S2", ""}, {"length", 0}}));
    EXPECT_EQ(timesLoggedFrom(search), 0);
}

TEST_F(DuplicateTest, TheComparisonIsLoggedWithAllThatIsStored)
{
    askGroup(3);
    scan("ABC");
    expectError("Duplicated input detected");
    expectError("Invalid input");
    scan("ABC");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, search + " saved data: {G1 = {S1 = ABC; length = 3}}, G1"));
}

} // namespace
