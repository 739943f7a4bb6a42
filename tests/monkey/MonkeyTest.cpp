#include "tests/monkey/Monkey.h"

#include "tests/monkey/MonkeyFixture.h"
#include "tests/monkey/Requests.h"

#include <gtest/gtest.h>

#include <vector>

namespace monkey {
namespace {

constexpr int StepsOfASeed = 200;
constexpr int Seeds = 10;

/// A whole number of the environment, or the value without it.
int fromEnvironment(const char *name, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber ? number : otherwise;
}

/// The one asked for by MONKEY_SEED, or the first MONKEY_SEEDS.
std::vector<int> seeds()
{
    if (qEnvironmentVariableIsSet("MONKEY_SEED"))
        return {fromEnvironment("MONKEY_SEED", 1)};
    std::vector<int> all;
    for (int seed = 1; seed <= fromEnvironment("MONKEY_SEEDS", Seeds); ++seed)
        all.push_back(seed);
    return all;
}

/// Random calls and a random operator: what is promised to the operator and the sequences holds all the time.
class MonkeyTest : public MonkeyFixture, public ::testing::WithParamInterface<int>
{};

TEST_P(MonkeyTest, NobodyWaitsForEverNoScanGoesAstrayNoPressAnswersAnotherCall)
{
    const auto seed = static_cast<quint64>(GetParam());
    const int steps = fromEnvironment("MONKEY_STEPS", StepsOfASeed);
    Dice dice(seed, 0);
    Monkey monkey(startWorld(randomShape(dice)), seed);
    const QString broken = monkey.run(steps);
    EXPECT_TRUE(broken.isEmpty()) << broken.toStdString() << "\nafter:\n"
                                  << monkey.lastSteps().toStdString() << "\nagain with MONKEY_SEED=" << seed
                                  << " MONKEY_STEPS=" << steps;
}

INSTANTIATE_TEST_SUITE_P(Seed, MonkeyTest, ::testing::ValuesIn(seeds()),
                         [](const auto &seed) { return std::to_string(seed.param); });

} // namespace
} // namespace monkey
