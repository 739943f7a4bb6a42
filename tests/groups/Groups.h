#pragma once

#include "groups/GroupButtons.h"
#include "platform/Button.h"
#include "platform/SplitView.h"

#include "common/Waits.h"

namespace testsupport {

/// The group buttons of a station with one slot a group, and what they work upon, without a window.
///
/// Thread: the main thread.
struct Groups
{
    explicit Groups(const QStringList &names)
        : station(mappingOf(names), platform::Array(names.size(), "S1"))
    {
        root.addSubview(splitView);
    }

    /// Makes the buttons in the root view.
    void setUp()
    {
        views.setViews(&root, nullptr, splitView);
        buttons.setupGroupButtons(nullptr);
    }
    /// The button with the title; null when there is none.
    platform::Button *button(const QString &title)
    {
        for (platform::Button *each : buttons.groupButtons()) {
            if (each->title() == title)
                return each;
        }
        return nullptr;
    }

    interactive::StationMap station;
    interactive::PanelRecords records;
    interactive::SlotStates slotStates;
    interactive::Waits waits;
    interactive::PanelSettings settings;
    interactive::PanelViews views{station};
    interactive::Focus focus{station, records, slotStates, views, settings};
    platform::View root;
    platform::SplitView *splitView = new platform::SplitView; ///< The root view owns it.
    interactive::GroupButtons buttons{station, slotStates, waits, views, focus};

private:
    static platform::Array mappingOf(const QStringList &names)
    {
        platform::Array mapping;
        for (const QString &name : names)
            mapping.append(name);
        return mapping;
    }
};

} // namespace testsupport
