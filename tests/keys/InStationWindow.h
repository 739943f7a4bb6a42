#pragma once

#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "platform/Button.h"
#include "station/badge/BadgeField.h"
#include "station/instruction/InstructionPane.h"
#include "station/window/LogPane.h"
#include "station/window/StationWindow.h"
#include "tests/support/AccessibleWalk.h"
#include "tests/support/FieldKeys.h"
#include "tests/support/ManualKeyClock.h"
#include "tests/support/Wait.h"

#include <QApplication>

#include <memory>

namespace testsupport {

/// A fixture of the plug-in whose view stands in the station's own window, with a badge's field in its tool
/// bar.
///
/// Thread: the main thread.
template <class Fixture>
class InStationWindow : public Fixture
{
protected:
    std::unique_ptr<QWidget> makeWindow() override
    {
        QList<station::SystemRow> systems;
        for (const QString &group : this->station.groups) {
            for (const QString &slot : this->station.slotNames)
                systems.append({static_cast<int>(systems.size()), group, slot});
        }
        auto window = std::make_unique<station::StationWindow>("Final test 4", systems);
        // As the station does it.
        window->addPluginView("Interactive", this->plugin().view(),
                              {this->plugin().minWidthHint(), this->plugin().minHeightHint()});
        station::BadgeRule rule;
        rule.isAsked = true;
        badge = new station::BadgeField(rule);
        window->addTool(badge);
        window->setStandsOnNoScreen();
        window->resize(this->station.windowSize);
        return window;
    }

    station::StationWindow &stationWindow() { return static_cast<station::StationWindow &>(this->window()); }
    QString focused() { return focusedIn(this->window()); }
    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(this->window().windowHandle(), which, modifiers);
    }
    /// Every station that Tab stops at, from where the focus is not until it comes round; by spoken names.
    QStringList round(Qt::Key tab = Qt::Key_Tab)
    {
        this->window().setFocus();
        QStringList names;
        constexpr int Most = 200;
        while (names.size() < Most) {
            clock.pause();
            key(tab, tab == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
            if (!names.isEmpty() && focused() == names.first())
                break;
            names.append(focused());
        }
        return names;
    }
    /// Tabs until the control has the focus; a failed test when it never has.
    void tabTo(const QString &name)
    {
        this->window().setFocus();
        constexpr int Most = 200;
        for (int i = 0; i < Most && (i == 0 || focused() != name); ++i) {
            clock.pause();
            key(Qt::Key_Tab);
        }
        ASSERT_EQ(focused().toStdString(), name.toStdString());
    }

    ManualKeyClock clock;                 ///< Tab comes from a person.
    station::BadgeField *badge = nullptr; ///< The window owns it.

private:
    static QString focusedIn(const QWidget &window)
    {
        QWidget *widget = window.focusWidget();
        return widget && widget != &window ? spokenName(widget) : QString();
    }
};

} // namespace testsupport
