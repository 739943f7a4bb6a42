#pragma once

#include "groups/GroupButtons.h"
#include "groups/Switches.h"
#include "input/AutoConfirm.h"
#include "input/Confirmation.h"
#include "input/Defaults.h"
#include "input/Entries.h"
#include "input/Focus.h"
#include "input/Guidance.h"
#include "input/KeyRouter.h"
#include "layout/Document.h"
#include "layout/ErrorPanel.h"
#include "layout/PanelBuilder.h"
#include "layout/SlotBoxes.h"
#include "plugin/LoopControls.h"
#include "presentation/PanelViews.h"
#include "presentation/SlotColors.h"

#include "common/Checks.h"
#include "common/GivenAnswers.h"
#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/RulesInForce.h"
#include "common/SlotStates.h"
#include "common/StationMap.h"
#include "common/Waits.h"

namespace interactive {

/// Everything that one controller is made of, put together: the owners of its state, then each room's classes
/// in the order in which they build on one another.
///
/// Thread: made and destroyed on the main thread; the members as each says. Ownership: the controller owns
/// it, and outlives every call into it.
struct Rooms
{
    Rooms(QObject *controller, platform::CollectionViewDelegate *delegate);

    // What is known of the station, and what its panels have collected
    StationMap station;
    PanelSettings settings;
    PanelRecords records;
    SlotStates slotStates;
    Waits waits;
    RulesInForce rules;
    GivenAnswers answers;
    Checks checks;

    // What is on the screen
    PanelViews views{station};
    SlotColors colors{settings};
    Focus focus{station, records, slotStates, views, settings};
    KeyRouter keys{views, focus};
    Guidance guidance{views};
    Defaults defaults{records, rules, focus, views};
    AutoConfirm autoConfirm{station, records, rules, checks, focus, views};
    Entries entries{station, records,  slotStates, waits, rules,    answers,
                    checks,  settings, views,      focus, defaults, autoConfirm};
    Confirmation confirmation{station, records, waits,    checks,  settings,
                              views,   focus,   defaults, entries, keys};
    GroupButtons groupButtons{station, slotStates, waits, views, focus};
    Switches switches{station, records, slotStates, settings, views, colors, focus, defaults, autoConfirm};
    Document document{station, views};
    ErrorPanel errors;
    SlotBoxes boxes;
    PanelBuilder builder;
    LoopControls loop{station, records, views, focus};
};

} // namespace interactive
