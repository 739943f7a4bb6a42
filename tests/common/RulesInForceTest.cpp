#include "common/RulesInForce.h"

#include <gtest/gtest.h>

#include <memory>

using interactive::AskRules;
using interactive::RulesInForce;

namespace {

TEST(RulesInForceTest, AreThoseOfThePanelsThatWait)
{
    RulesInForce rules;
    const auto asked = std::make_shared<const AskRules>();
    rules.put("0", asked);
    EXPECT_EQ(rules.of("0"), asked);
    EXPECT_EQ(rules.panels(), QStringList{"0"});
    rules.remove("0");
    EXPECT_NE(rules.of("0"), asked);
    ASSERT_NE(rules.of("0"), nullptr) << "a panel that is not known asks for nothing";
    EXPECT_EQ(rules.panels(), QStringList());
}

} // namespace
