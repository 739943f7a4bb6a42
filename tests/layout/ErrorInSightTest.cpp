#include "platform/Button.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Dictionary;

namespace {

const Dictionary entry{{"input", Array{"SN"}}};
const Dictionary refused{{"input", Array{"A", "B"}}};

/// A message of a refused call where more is open than the window holds.
class ErrorInSightTest : public testsupport::PluginFixture
{
protected:
    ErrorInSightTest()
    {
        station.groups = {"G1", "G2", "G3", "G4", "G5", "G6"};
        station.windowSize = {1200, 300};
    }
    static bool isSeen(const QWidget *view) { return view->visibleRegion().boundingRect() == view->rect(); }
};

TEST_F(ErrorInSightTest, IsScrolledIntoSight)
{
    showView(20, entry);
    ASSERT_TRUE(waitForPanel("20"));
    ASSERT_TRUE(isSeen(field("20-SN")));
    for (const int system : {0, 12}) {
        showView(system, refused);
        const QString group = system == 0 ? "G1" : "G4";
        ASSERT_TRUE(waitForPanel(group));
        EXPECT_TRUE(isSeen(button(group, "OK"))) << group.toStdString();
    }
}

TEST_F(ErrorInSightTest, LeavesABegunEntryInSight)
{
    showView(20, entry);
    ASSERT_TRUE(waitForPanel("20"));
    type("A1");
    for (const int system : {0, 12}) {
        showView(system, refused);
        ASSERT_TRUE(waitForPanel(system == 0 ? "G1" : "G4"));
        EXPECT_TRUE(isSeen(field("20-SN")));
    }
}

} // namespace
