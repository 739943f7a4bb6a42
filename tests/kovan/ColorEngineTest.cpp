#include "kovan/KovanUIExtension/KVKColorEngine.h"

#include <gtest/gtest.h>

using platform::Color;

namespace {

class ColorEngineTest : public ::testing::Test
{
protected:
    ~ColorEngineTest() override { KVKColorEngine::setProviders({}, {}); }
};

TEST_F(ColorEngineTest, HasNoColourUntilTheHostSaysWhereTheyComeFrom)
{
    EXPECT_FALSE(KVKColorEngine::backgroundColorForIndex(0));
    EXPECT_FALSE(KVKColorEngine::textColorForIndex(0));
}

TEST_F(ColorEngineTest, AsksTheProviderOfTheKindWithTheSystem)
{
    const auto onlyThree = [](const Color &color) {
        return [color](const platform::Value &index) {
            return index.toInt() == 3 ? std::optional(color) : std::nullopt;
        };
    };
    KVKColorEngine::setProviders(onlyThree(Color::white()), onlyThree(Color::standardRed()));
    EXPECT_EQ(KVKColorEngine::backgroundColorForIndex(3), Color::white());
    EXPECT_EQ(KVKColorEngine::textColorForIndex(3), Color::standardRed());
    EXPECT_FALSE(KVKColorEngine::backgroundColorForIndex(2));
    EXPECT_FALSE(KVKColorEngine::textColorForIndex(2));
}

} // namespace
