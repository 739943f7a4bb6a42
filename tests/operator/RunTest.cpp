#include "tests/operator/OperatorFixture.h"
#include "tests/support/Wait.h"

namespace {

using Running = testsupport::OperatorFixture;

} // namespace

TEST_F(Running, AndStopArePressed)
{
    runs("operator.run() operator.stop()");
    EXPECT_EQ(pressed, QStringList({"Run", "Stop"}));
}

TEST_F(Running, CannotBePressedWhileSequencesRun)
{
    EXPECT_EQ(fails("operator.run()\noperator.run()"), "operator.lua:2: a run is under way already");
    EXPECT_EQ(pressed, QStringList("Run"));
}

TEST_F(Running, ThatIsNotThereCannotBeStopped)
{
    EXPECT_EQ(fails("operator.stop()"), "operator.lua:1: there is no run that could be stopped");
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(Running, EndIsWaitedFor)
{
    start("operator.run() operator.waitForRunEnd(60)");
    ASSERT_TRUE(testsupport::waitUntil([this] { return !pressed.isEmpty(); }));
    runAction.setEnabled(true);
    EXPECT_TRUE(outcome().ok);
}

TEST_F(Running, ThatGoesOnFailsTheWait)
{
    EXPECT_EQ(fails("operator.run() operator.waitForRunEnd(0.05)"),
              "operator.lua:1: the run has not ended within 0.05 s");
}
