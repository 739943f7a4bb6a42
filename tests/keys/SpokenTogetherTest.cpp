#include "station/window/LogView.h"
#include "tests/keys/InStationWindow.h"
#include "tests/support/PanelKinds.h"

#include <QScrollBar>

namespace {

/// What assistive technology is told of the station's window with each kind of panel in it.
class SpokenTogether : public testsupport::InStationWindow<testsupport::PanelKindsFixture>,
                       public ::testing::WithParamInterface<testsupport::PanelKind>
{};

TEST_P(SpokenTogether, HasANameAndARoleForEveryControlAndText)
{
    start();
    stationWindow().setRunning(true);
    stationWindow().logPane()->setFolded(false);
    open(GetParam());
    // With all that comes and goes by itself.
    const auto *lines = stationWindow().logPane()->view();
    for (int line = 0; line < 40; ++line)
        KVKLogGetProxy()->proxyLogMessage(KVKLogLevel::Default, "%@", {QString(400, 'x')});
    ASSERT_TRUE(testsupport::waitUntil([lines] {
        return lines->verticalScrollBar()->isVisible() && lines->horizontalScrollBar()->isVisible();
    }));
    EXPECT_EQ(testsupport::accessibilityFaults(&window()), QStringList());
    EXPECT_GT(testsupport::spokenIn(&window()).size(), 20);
}

INSTANTIATE_TEST_SUITE_P(, SpokenTogether, ::testing::ValuesIn(testsupport::panelKinds()),
                         testsupport::nameOfKind);

} // namespace
