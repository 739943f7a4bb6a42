#include "station/look/Theme.h"

#include "platform/View.h"
#include "station/look/Contrast.h"
#include "station/look/ElidedLabel.h"
#include "station/look/WindowLook.h"
#include "station/window/ErrorButton.h"
#include "station/window/LogPane.h"
#include "station/window/RunProgress.h"
#include "station/window/StationWindow.h"
#include "station/window/WindowMenus.h"
#include "tests/support/Wait.h"

#include <QAction>
#include <QApplication>
#include <QLabel>

#include <gtest/gtest.h>

using station::contrast;
using station::isDark;
using station::ReadableContrast;
using station::StationWindow;
using station::ThemeChoice;
using station::windowPalette;
using testsupport::waitUntil;

namespace {

class ThemeTest : public ::testing::Test
{
protected:
    ~ThemeTest() override { QApplication::setPalette(QPalette()); }

    [[nodiscard]] bool waitForDark(bool dark) const
    {
        return waitUntil([&] { return isDark(window.palette()) == dark; });
    }

    StationWindow window{"Final test 4", {{0, "G1", "S1"}}};
};

TEST(ThemeText, ThereAndBack)
{
    for (const ThemeChoice choice : {ThemeChoice::Auto, ThemeChoice::Light, ThemeChoice::Dark})
        EXPECT_EQ(station::themeFromText(station::themeText(choice)), choice);
    EXPECT_EQ(station::themeFromText("Dark"), std::nullopt);
    EXPECT_EQ(station::themeFromText(""), std::nullopt);
}

TEST(ThemeColors, EveryTextCanBeReadOnWhatItStandsOn)
{
    using Role = QPalette::ColorRole;
    const std::pair<Role, Role> pairs[] = {{Role::Text, Role::Base},
                                           {Role::WindowText, Role::Window},
                                           {Role::ButtonText, Role::Button},
                                           {Role::HighlightedText, Role::Highlight},
                                           {Role::ToolTipText, Role::ToolTipBase},
                                           {Role::PlaceholderText, Role::Base},
                                           {Role::Link, Role::Base}};
    for (const bool dark : {false, true}) {
        const QPalette palette = windowPalette(dark);
        EXPECT_EQ(isDark(palette), dark);
        for (const auto &[text, ground] : pairs)
            EXPECT_GE(contrast(palette.color(text), palette.color(ground)), ReadableContrast) << text;
        for (const KVKLogLevel level : {KVKLogLevel::Debug, KVKLogLevel::Default, KVKLogLevel::Error})
            EXPECT_GE(contrast(station::logColor(level, palette), palette.color(QPalette::Base)),
                      ReadableContrast);
        const QPalette error = station::errorPalette(palette);
        EXPECT_GE(contrast(error.color(QPalette::ButtonText), error.color(QPalette::Button)),
                  ReadableContrast);
        const QPalette message = station::messagePalette(palette);
        EXPECT_GE(contrast(message.color(QPalette::WindowText), message.color(QPalette::Window)),
                  ReadableContrast);
        // A ring is no text; what has to be told apart needs 3.
        EXPECT_GE(contrast(station::focusColor(palette), palette.color(QPalette::Window)), 3.0);
    }
}

TEST_F(ThemeTest, FollowsTheDesktopWhileItRuns)
{
    window.show();
    EXPECT_FALSE(isDark(window.palette()));
    QApplication::setPalette(QPalette(QColor(40, 40, 40)));
    EXPECT_TRUE(waitForDark(true));
    QApplication::setPalette(QPalette());
    EXPECT_TRUE(waitForDark(false));
}

TEST_F(ThemeTest, IsWhatSomebodyHasChosenWhateverTheDesktopIs)
{
    window.setTheme(ThemeChoice::Dark, StationWindow::Keep::No);
    EXPECT_TRUE(isDark(window.palette()));
    EXPECT_TRUE(isDark(QApplication::palette()));
    EXPECT_TRUE(window.menus()->theme(ThemeChoice::Dark)->isChecked());
    window.menus()->theme(ThemeChoice::Light)->trigger();
    EXPECT_TRUE(waitForDark(false));
    EXPECT_FALSE(window.menus()->theme(ThemeChoice::Dark)->isChecked());
    window.setTheme(ThemeChoice::Auto, StationWindow::Keep::No);
    EXPECT_FALSE(isDark(QApplication::palette()));
}

TEST_F(ThemeTest, ASwitchWhileTheWindowIsAtWorkKeepsAllThatItShows)
{
    window.addPluginView("Interactive", new platform::View({0, 0, 300, 200}), {300, 200});
    window.show();
    window.setRunning(true);
    window.setProgress(1, 0, 2);
    window.showMessage("No field waits");
    window.setTheme(ThemeChoice::Dark, StationWindow::Keep::No);
    QApplication::processEvents();
    EXPECT_TRUE(isDark(window.palette()));
    EXPECT_EQ(window.progress()->text(), "1 of 2 systems done");
    EXPECT_EQ(window.message(), "No field waits");
    // Amber stays amber.
    const QPalette line = window.findChild<QLabel *>("message")->palette();
    EXPECT_FALSE(isDark(line));
    EXPECT_GE(contrast(line.color(QPalette::WindowText), line.color(QPalette::Window)), ReadableContrast);
    const QPalette errors = window.logPane()->errorButton()->palette();
    EXPECT_GE(contrast(errors.color(QPalette::ButtonText), errors.color(QPalette::Button)), ReadableContrast);
    const QPalette status = window.findChild<QLabel *>("status")->palette();
    EXPECT_GE(contrast(status.color(QPalette::WindowText), status.color(QPalette::Window)), ReadableContrast);
}

} // namespace
