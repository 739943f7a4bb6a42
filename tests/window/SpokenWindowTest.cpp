#include "platform/Button.h"
#include "platform/TextField.h"
#include "station/window/LogPane.h"
#include "station/window/StationWindow.h"
#include "tests/support/AccessibleWalk.h"

#include <gtest/gtest.h>

using platform::Button;
using platform::Rect;
using platform::TextField;
using platform::View;
using station::StationWindow;
using station::SystemState;
using testsupport::accessibilityFaults;

namespace {

/// What assistive technology is told of the whole window, whatever it is made of.
class SpokenWindowTest : public ::testing::Test
{
protected:
    void show()
    {
        auto *panels = new View(Rect(0, 0, 400, 300));
        auto *field = new TextField(Rect(10, 10, 100, 25));
        field->setEditable(true);
        field->setSpokenName("SN, slot S1, group G1");
        panels->addSubview(field);
        auto *button = new Button(Rect(10, 60, 80, 30));
        button->setTitle("OK");
        panels->addSubview(button);
        window.addPluginView("Interactive", panels, {400, 300});
        window.show();
    }
    void expectNoFaults() { EXPECT_EQ(accessibilityFaults(&window), QStringList()); }

    StationWindow window{"Final test 4", {{0, "G1", "S1"}, {1, "G1", "S2"}}};
};

TEST_F(SpokenWindowTest, HasANameAndARoleForEveryControlBeforeARun)
{
    show();
    expectNoFaults();
}

TEST_F(SpokenWindowTest, HasThemWhileItRunsAndTellsSomething)
{
    show();
    window.setRunning(true);
    window.setStatus("Running");
    window.setSystemState(0, SystemState::Running);
    window.highlightSystem(1, true);
    window.showMessage("Entry refused: A (no field waits for it)");
    expectNoFaults();
}

TEST_F(SpokenWindowTest, HasThemWithTwoPluginsToo)
{
    show();
    window.addPluginView("Second", new View(Rect(0, 0, 100, 100)), {100, 100});
    expectNoFaults();
}

} // namespace
