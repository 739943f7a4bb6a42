#include "common/AskRules.h"

#include <gtest/gtest.h>

using interactive::AskRules;
using interactive::EntryRule;

namespace {

TEST(AskRulesTest, SeveralEntriesWithDefaultsHaveAStatusLineAndASingleOneHasNone)
{
    AskRules rules;
    rules.entries = {{"SN", EntryRule()}};
    rules.defaults = {{"SN", "A"}};
    EXPECT_FALSE(rules.hasStatusLine());
    rules.entries.insert("MAC", EntryRule());
    EXPECT_TRUE(rules.hasStatusLine());
    rules.defaults.clear();
    EXPECT_FALSE(rules.hasStatusLine());
}

} // namespace
