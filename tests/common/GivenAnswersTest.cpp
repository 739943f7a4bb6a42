#include "common/GivenAnswers.h"

#include <gtest/gtest.h>

using interactive::GivenAnswers;

namespace {

TEST(GivenAnswersTest, AreTheEntriesOfRecordsAndNothingElseThatStandsThere)
{
    GivenAnswers given;
    given.add({{"length", 4}, {"S1", "A"}, {"S2", 12}, {"clickedButton", "Pass"}});
    for (const char *entry : {"A", "12"})
        EXPECT_TRUE(given.contains(entry)) << entry;
    for (const char *other : {"4", "Pass", "S1", ""})
        EXPECT_FALSE(given.contains(other)) << other;
    given.forget();
    EXPECT_FALSE(given.contains("A"));
}

} // namespace
