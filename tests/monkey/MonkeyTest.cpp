#include "tests/monkey/Monkey.h"

#include "tests/monkey/CaseFile.h"
#include "tests/monkey/MonkeyFixture.h"
#include "tests/monkey/Requests.h"
#include "tests/monkey/Shortener.h"

#include <gtest/gtest.h>

#include <vector>

namespace monkey {
namespace {

constexpr int StepsOfASeed = 200;
/// A tenth of them where a sanitizer looks on.
#ifdef IS_SANITIZED
constexpr int Seeds = 10;
#else
constexpr int Seeds = 50;
#endif

/// A whole number of the environment, or the value without it.
int fromEnvironment(const char *name, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber ? number : otherwise;
}

/// The one asked for by MONKEY_SEED, or MONKEY_SEEDS of them from MONKEY_FIRST on.
std::vector<int> seeds()
{
    if (qEnvironmentVariableIsSet("MONKEY_SEED"))
        return {fromEnvironment("MONKEY_SEED", 1)};
    const int first = fromEnvironment("MONKEY_FIRST", 1);
    std::vector<int> all;
    for (int seed = first; seed < first + fromEnvironment("MONKEY_SEEDS", Seeds); ++seed)
        all.push_back(seed);
    return all;
}

/// Random calls and a random operator: what is promised to the operator and the sequences holds all the time.
class MonkeyTest : public MonkeyFixture, public ::testing::WithParamInterface<int>
{
protected:
    /// The fewest of the steps that still break something, as a file of tests/monkey/cases.
    QString shortenedText(const Shape &shape, const Steps &steps)
    {
        // What is stuck is waited for again and again.
        prepare = [](World &world) { world.patience = std::chrono::seconds(3); };
        const auto breaks = [&](const Steps &tried) { return !replay(shape, tried).isEmpty(); };
        if (!breaks(steps))
            return QStringLiteral("# not broken again by these steps\n") + Case{shape, steps}.text();
        const Steps left = shortened(steps, breaks, fromEnvironment("MONKEY_TRIES", 150));
        return QStringLiteral("# %1\n").arg(replay(shape, left).section(QLatin1Char('\n'), 0, 0)) +
               Case{shape, left}.text();
    }
};

TEST_P(MonkeyTest, NobodyWaitsForEverNoScanGoesAstrayNoPressAnswersAnotherCall)
{
    const auto seed = static_cast<quint64>(GetParam());
    const int steps = fromEnvironment("MONKEY_STEPS", StepsOfASeed);
    Dice dice(seed, 0);
    const Shape shape = randomShape(dice);
    Steps done;
    QString broken;
    {
        Monkey monkey(startWorld(shape));
        broken = monkey.run(seed, steps);
        done = monkey.done();
    }
    if (broken.isEmpty())
        return;
    ADD_FAILURE() << broken.toStdString() << "\nagain with MONKEY_SEED=" << seed << " MONKEY_STEPS=" << steps;
    endWorld();
    std::cerr << "shortened, for a file in tests/monkey/cases:\n"
              << shortenedText(shape, done).toStdString() << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Seed, MonkeyTest, ::testing::ValuesIn(seeds()),
                         [](const auto &seed) { return std::to_string(seed.param); });

} // namespace
} // namespace monkey
