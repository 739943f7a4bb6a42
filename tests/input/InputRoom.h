#pragma once

#include "input/AutoConfirm.h"
#include "input/Confirmation.h"
#include "input/Defaults.h"
#include "input/Entries.h"
#include "input/Focus.h"
#include "input/KeyRouter.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/PanelViews.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/LogTrap.h"
#include "tests/support/Printing.h"
#include "tests/support/SequencerCall.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "common/Checks.h"
#include "common/GivenAnswers.h"
#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/RulesInForce.h"
#include "common/SlotStates.h"
#include "common/StationMap.h"
#include "common/Waits.h"

namespace testsupport {

/// The classes that take entries, put together by themselves: for the rules about states that no panel of the
/// plug-in comes into, since its panels have one field a system and a record as long as they stand.
///
/// A station of two groups with three slots each, without a window. Thread: the main thread.
class InputRoom : public ::testing::Test
{
protected:
    using Field = interactive::MouseTrackedTextField;

    InputRoom()
    {
        root.addSubview(splitView);
        views.setViews(&root, nullptr, splitView);
    }

    /// Makes input fields with these names and texts the panel's own.
    void addFields(const QString &panelKey, const std::vector<std::pair<QString, QString>> &fields)
    {
        interactive::Responders all;
        for (const auto &[name, text] : fields) {
            auto *made = new Field;
            made->setEditable(true);
            made->setIdentifier(platform::Identifier(panelKey + "-" + name));
            made->setStringValue(text);
            made->setBackgroundColor(platform::Color::systemBlue());
            root.addSubview(made);
            all.append(made);
        }
        views.setResponders(panelKey, all);
    }
    Field *field(const QString &identifier)
    {
        for (platform::View *view : root.subviews()) {
            if (view->identifier() == platform::Identifier(identifier))
                return qobject_cast<Field *>(view);
        }
        return nullptr;
    }
    platform::Dictionary record(const QString &panelKey) const
    {
        return records.record(panelKey).value_or(platform::Dictionary());
    }
    /// Whether the panel may be closed, asked on another thread.
    bool mayClose(const QString &panelKey)
    {
        SequencerCall call([this, panelKey](platform::Error *) {
            return platform::Value(confirmation.checkAllInputs(platform::Identifier(panelKey)));
        });
        return call.result().toBool();
    }
    bool loggedOnce(KVKLogLevel level, const QString &line) const { return log.count(level, line) == 1; }

    LogRecorder log;
    interactive::StationMap station{{"G1", "G1", "G1", "G2", "G2", "G2"},
                                    {"S1", "S2", "S3", "S1", "S2", "S3"}};
    interactive::PanelRecords records;
    interactive::SlotStates slotStates;
    interactive::Waits waits;
    interactive::RulesInForce rules;
    interactive::GivenAnswers answers;
    interactive::Checks checks;
    interactive::PanelSettings settings;
    interactive::PanelViews views{station};
    platform::View root;
    platform::SplitView *splitView = new platform::SplitView; ///< The root view owns it.
    interactive::Focus focus{station, records, slotStates, views, settings};
    interactive::KeyRouter keys{views, focus};
    interactive::Defaults defaults{records, rules, focus, views};
    interactive::AutoConfirm autoConfirm{station, records, rules, checks, focus, views};
    interactive::Entries entries{station, records,  slotStates, waits, rules,    answers,
                                 checks,  settings, views,      focus, defaults, autoConfirm};
    interactive::Confirmation confirmation{station, records, waits,    checks,  settings,
                                           views,   focus,   defaults, entries, keys};
};

} // namespace testsupport
