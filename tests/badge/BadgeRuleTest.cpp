#include "station/badge/BadgeRule.h"

#include <gtest/gtest.h>

using station::BadgeRule;

namespace {

TEST(BadgeRule, TakesAnyTextWithoutAPattern)
{
    const BadgeRule rule{true, {}};
    EXPECT_FALSE(rule.whyNot("4711"));
    EXPECT_FALSE(rule.whyNot("Anna Müller"));
    EXPECT_FALSE(rule.whyNot(QString(BadgeRule::LongestBadge, 'x')));
    EXPECT_EQ(rule.whyNot(""), "it is empty");
    EXPECT_EQ(rule.whyNot(QString(BadgeRule::LongestBadge + 1, 'x')), "it is longer than 256 characters");
    EXPECT_EQ(rule.whyNot("47\x1d"
                          "11"),
              "it holds a control character");
}

TEST(BadgeRule, ThePatternIsThatOfTheWholeBadge)
{
    const BadgeRule rule{true, "B[0-9]{3}|X"};
    EXPECT_FALSE(rule.whyNot("B123"));
    EXPECT_FALSE(rule.whyNot("X"));
    for (const char *no : {"B12", "B1234", "AB123", "XX", "B123\n"})
        EXPECT_TRUE(rule.whyNot(no)) << no;
    EXPECT_EQ(rule.whyNot("B12"), "it does not have the form of a badge");
}

TEST(BadgeRule, SaysWhereAPatternIsWrong)
{
    EXPECT_FALSE(BadgeRule::whyNoPattern("B[0-9]+"));
    EXPECT_FALSE(BadgeRule::whyNoPattern(""));
    const auto why = BadgeRule::whyNoPattern("B[0-9");
    ASSERT_TRUE(why);
    EXPECT_TRUE(why->contains("at character")) << why->toStdString();
}

} // namespace
