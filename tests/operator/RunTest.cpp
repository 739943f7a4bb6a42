#include "platform/MainQueue.h"
#include "tests/operator/OperatorFixture.h"

namespace {

using Run = testsupport::OperatorFixture;

} // namespace

TEST_F(Run, AndStopArePressed)
{
    runs("operator.run() operator.stop()");
    EXPECT_EQ(pressed, QStringList({"Run", "Stop"}));
}

TEST_F(Run, CannotBePressedWhileSequencesRun)
{
    EXPECT_EQ(fails("operator.run()\noperator.run()"), "operator.lua:2: a run is under way already");
    EXPECT_EQ(pressed, QStringList("Run"));
}

TEST_F(Run, ThatIsNotThereCannotBeStopped)
{
    EXPECT_EQ(fails("operator.stop()"), "operator.lua:1: there is no run that could be stopped");
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(Run, EndIsWaitedFor)
{
    start("operator.run() operator.waitForRunEnd(60)");
    platform::MainQueue::async([this] { runAction.setEnabled(true); });
    EXPECT_TRUE(outcome().ok);
}

TEST_F(Run, ThatGoesOnFailsTheWait)
{
    EXPECT_EQ(fails("operator.run() operator.waitForRunEnd(0.05)"),
              "operator.lua:1: the run has not ended within 0.05 s");
}
