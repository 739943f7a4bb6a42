#include "tests/support/PluginFixture.h"

using platform::Dictionary;
using platform::Identifier;

namespace {

/// Which texts may not be stored because the group's panel already holds them.
class DuplicateTest : public testsupport::PluginFixture
{
protected:
    bool accepts(const QString &text, const QString &panelKey = QStringLiteral("G1"))
    {
        return rooms().entries.checkDuplicatedInput(text, rooms().waits.panelKey(panelKey));
    }
};

TEST_F(DuplicateTest, AStoredTextIsRefused)
{
    rooms().records.restore({{"G1", Dictionary{{"S1", "ABC"}, {"length", 3}}}});
    EXPECT_FALSE(accepts("ABC"));
    EXPECT_TRUE(accepts("DEF"));
}

TEST_F(DuplicateTest, TheCaseAndEveryCharacterCount)
{
    rooms().records.restore({{"G1", Dictionary{{"S1", "ABC"}}}});
    EXPECT_TRUE(accepts("abc"));
    EXPECT_TRUE(accepts("ABC "));
    EXPECT_TRUE(accepts("AB"));
}

TEST_F(DuplicateTest, WhatOtherPanelsHoldDoesNotCount)
{
    rooms().records.restore({{"G2", Dictionary{{"S1", "ABC"}}}, {"0", Dictionary{{"SN", "ABC"}}}});
    EXPECT_TRUE(accepts("ABC"));
}

TEST_F(DuplicateTest, ASingleSystemsPanelIsNeverChecked)
{
    rooms().records.restore({{"0", Dictionary{{"SN", "ABC"}}}});
    EXPECT_TRUE(accepts("ABC", "0"));
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView checkDuplicatedInput:withIdentifier:]"), 0);
}

TEST_F(DuplicateTest, TheEmptyTextIsNeverADuplicate)
{
    rooms().records.restore({{"G1", Dictionary{{"S1", ""}}}});
    EXPECT_TRUE(accepts(""));
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView checkDuplicatedInput:withIdentifier:]"), 0);
}

TEST_F(DuplicateTest, TheLengthIsNoEntry)
{
    rooms().records.restore({{"G1", Dictionary{{"length", 8}}}});
    EXPECT_TRUE(accepts("8"));
}

TEST_F(DuplicateTest, ThePressedButtonIsComparedLikeAnEntry)
{
    rooms().records.restore({{"G1", Dictionary{{"clickedButton", "Pass"}}}});
    EXPECT_FALSE(accepts("Pass"));
}

TEST_F(DuplicateTest, AStoredNumberIsComparedAsItDescribesItself)
{
    rooms().records.restore({{"G1", Dictionary{{"S1", 8.0}}}});
    EXPECT_FALSE(accepts("8"));
}

TEST_F(DuplicateTest, WithoutARecordNothingIsADuplicate)
{
    EXPECT_TRUE(accepts("ABC"));
}

TEST_F(DuplicateTest, TheComparisonIsLoggedWithAllThatIsStored)
{
    rooms().records.restore({{"G1", Dictionary{{"S1", "ABC"}, {"length", 3}}}});
    EXPECT_FALSE(rooms().entries.checkDuplicatedInput("ABC", Identifier("G1")));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug,
                           "-[InteractiveView checkDuplicatedInput:withIdentifier:] saved data: "
                           "{G1 = {S1 = ABC; length = 3}}, G1"));
}

TEST_F(DuplicateTest, TheComparisonIsLoggedAlsoWithoutARecord)
{
    EXPECT_TRUE(accepts("ABC"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug,
                           "-[InteractiveView checkDuplicatedInput:withIdentifier:] saved data: {}, G1"));
}

} // namespace
