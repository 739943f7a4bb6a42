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
        return plugin().checkDuplicatedInput(text, plugin().panelKey(panelKey));
    }
};

TEST_F(DuplicateTest, AStoredTextIsRefused)
{
    plugin().setSavedData({{"G1", Dictionary{{"S1", "ABC"}, {"length", 3}}}});
    EXPECT_FALSE(accepts("ABC"));
    EXPECT_TRUE(accepts("DEF"));
}

TEST_F(DuplicateTest, TheCaseAndEveryCharacterCount)
{
    plugin().setSavedData({{"G1", Dictionary{{"S1", "ABC"}}}});
    EXPECT_TRUE(accepts("abc"));
    EXPECT_TRUE(accepts("ABC "));
    EXPECT_TRUE(accepts("AB"));
}

TEST_F(DuplicateTest, WhatOtherPanelsHoldDoesNotCount)
{
    plugin().setSavedData({{"G2", Dictionary{{"S1", "ABC"}}}, {"0", Dictionary{{"SN", "ABC"}}}});
    EXPECT_TRUE(accepts("ABC"));
}

TEST_F(DuplicateTest, ASingleSystemsPanelIsNeverChecked)
{
    plugin().setSavedData({{"0", Dictionary{{"SN", "ABC"}}}});
    EXPECT_TRUE(accepts("ABC", "0"));
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView checkDuplicatedInput:withIdentifier:]"), 0);
}

TEST_F(DuplicateTest, TheEmptyTextIsNeverADuplicate)
{
    plugin().setSavedData({{"G1", Dictionary{{"S1", ""}}}});
    EXPECT_TRUE(accepts(""));
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView checkDuplicatedInput:withIdentifier:]"), 0);
}

TEST_F(DuplicateTest, TheLengthIsNoEntry)
{
    plugin().setSavedData({{"G1", Dictionary{{"length", 8}}}});
    EXPECT_TRUE(accepts("8"));
}

TEST_F(DuplicateTest, ThePressedButtonIsComparedLikeAnEntry)
{
    plugin().setSavedData({{"G1", Dictionary{{"clickedButton", "Pass"}}}});
    EXPECT_FALSE(accepts("Pass"));
}

TEST_F(DuplicateTest, AStoredNumberIsComparedAsItDescribesItself)
{
    plugin().setSavedData({{"G1", Dictionary{{"S1", 8.0}}}});
    EXPECT_FALSE(accepts("8"));
}

TEST_F(DuplicateTest, WithoutARecordNothingIsADuplicate)
{
    EXPECT_TRUE(accepts("ABC"));
}

TEST_F(DuplicateTest, TheComparisonIsLoggedWithAllThatIsStored)
{
    plugin().setSavedData({{"G1", Dictionary{{"S1", "ABC"}, {"length", 3}}}});
    EXPECT_FALSE(plugin().checkDuplicatedInput("ABC", Identifier("G1")));
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
