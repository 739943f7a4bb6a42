#include "kovan/KovanLogging/KVKLogging.h"
#include "station/operator/LogRing.h"
#include "tests/operator/OperatorFixture.h"

namespace {

using Log = testsupport::OperatorFixture;

void logLine(int number)
{
    KVKLogGetProxy()->proxyLogMessage(KVKLogLevel::Default, "line %d", {number});
}

} // namespace

TEST(LogRing, KeepsTheLinesInOrder)
{
    const station::LogRing ring;
    logLine(1);
    logLine(2);
    EXPECT_EQ(ring.last(10), QStringList({"line 1", "line 2"}));
}

TEST(LogRing, GivesTheLastOnesOfMany)
{
    const station::LogRing ring;
    for (int number = 1; number <= 5; ++number)
        logLine(number);
    EXPECT_EQ(ring.last(2), QStringList({"line 4", "line 5"}));
    EXPECT_EQ(ring.last(-1), QStringList());
}

TEST(LogRing, DropsTheOldestBeyondItsCapacity)
{
    const station::LogRing ring;
    for (int number = 1; number <= station::LogRing::Capacity + 1; ++number)
        logLine(number);
    const QStringList lines = ring.last(station::LogRing::Capacity + 10);
    EXPECT_EQ(lines.size(), station::LogRing::Capacity);
    EXPECT_EQ(lines.first(), "line 2");
}

TEST_F(Log, ScriptReadsTheLinesLoggedSinceItWasMade)
{
    start("local lines\n"
          "repeat lines = operator.log() operator.sleep(0.001) until #lines == 2\n"
          "assert(lines[1] == 'line 1' and lines[2] == 'line 2', lines[1])\n"
          "local last = operator.log(1)\n"
          "assert(#last == 1 and last[1] == 'line 2')\n"
          "assert(#operator.log(0) == 0)");
    logLine(1);
    logLine(2);
    const Outcome result = outcome();
    EXPECT_TRUE(result.ok) << result.message.toStdString();
}

TEST_F(Log, GivesAHundredLinesUnlessAskedForMore)
{
    start("while #operator.log(200) < 150 do operator.sleep(0.001) end\n"
          "assert(#operator.log() == 100)");
    for (int number = 1; number <= 150; ++number)
        logLine(number);
    const Outcome result = outcome();
    EXPECT_TRUE(result.ok) << result.message.toStdString();
}
