#pragma once

#include "tests/support/GatedFunction.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <functional>
#include <ostream>
#include <vector>

namespace testsupport {

/// A panel in a state that an operator may meet it in.
struct PanelKind
{
    const char *name;
    bool isGroup = false;
    platform::Dictionary config{};
    /// What is entered, each with Return; one that is refused logs an error.
    QStringList scans{};
    bool isRefused = false;

    friend std::ostream &operator<<(std::ostream &stream, const PanelKind &kind)
    {
        return stream << kind.name;
    }
};

/// All kinds of panels, each as a slot's and as a group's where there are both.
inline std::vector<PanelKind> panelKinds()
{
    using platform::Array;
    using platform::Dictionary;
    const Array slot{"SN"};
    const Array both{"S1", "S2"};
    const Array buttons{"Clear", "OK"};
    return {
        {"SlotInput", false, {{"input", slot}}},
        {"SlotInputFilled", false, {{"input", slot}}, {"A1"}},
        {"SlotInputRefused", false, {{"input", slot}, {"length", "8"}, {"hint", "8 digits"}}, {"A1"}, true},
        {"SlotQuestion", false, {{"button", Array{"No", "Yes"}}}},
        {"SlotMessage", false, {{"message", "Press the cover down"}, {"button", Array{"Done"}}}},
        {"SlotMessageYellow",
         false,
         {{"message", "Careful"}, {"messageColor", "yellow"}, {"button", Array{"Done"}}}},
        {"SlotChoices", false, {{"input", slot}, {"choices", Array{"Red", "Green"}}, {"button", buttons}}},
        {"SlotNumber", false, {{"input", slot}, {"number", Dictionary{{"max", 5}, {"unit", "V"}}}}},
        {"SlotTimeLimit", false, {{"input", slot}, {"timeLimit", 3600}}},
        {"SlotDefault", false, {{"input", slot}, {"default", "D1"}, {"placeholder", "scan it"}}},
        {"SlotPlaceholder", false, {{"input", slot}, {"placeholder", "scan it"}}},
        {"SlotError", false, {{"input", Array{"A", "B"}}}},
        {"GroupInput", true, {{"input", both}}},
        {"GroupInputFilled", true, {{"input", both}}, {"A1", "B2"}},
        {"GroupInputRefused", true, {{"input", both}, {"length", "8"}, {"hint", "8 digits"}}, {"A1"}, true},
        {"GroupSwitches", true, {{"switch", both}}},
        {"GroupQuestion", true, {{"button", Array{"No", "Yes"}}}},
        {"GroupMessage", true, {{"message", "Load all fixtures"}}},
        {"GroupMessagePink", true, {{"message", "Load all"}, {"messageColor", "pink"}}},
        {"GroupChoices", true, {{"input", both}, {"choices", Array{"Red", "Green"}}}},
        {"GroupNumber", true, {{"input", both}, {"number", Dictionary{{"max", 5}, {"unit", "V"}}}}},
        {"GroupTimeLimit", true, {{"input", both}, {"timeLimit", 3600}}},
        {"GroupDefault",
         true,
         {{"input", both}, {"default", Dictionary{{"S1", "D1"}}}, {"placeholder", "scan it"}}},
        {"GroupError", true, {{"input", Array{"S1", "S9"}}}},
        {"SlotOpaque", false, {{"input", slot}, {"backgroundAlpha", "1.0"}}},
        {"GroupOpaque", true, {{"input", both}, {"backgroundAlpha", "1.0"}}, {"A1"}},
        {"SlotFaint", false, {{"input", slot}, {"backgroundAlpha", "0.05"}}},
        {"GroupFaint", true, {{"input", both}, {"backgroundAlpha", "0.05"}}, {"A1"}},
    };
}

/// Brings panels of all kinds onto the screen. Thread: the main thread.
class PanelKindsFixture : public PluginFixture
{
protected:
    /// Waits until the panel stands, and enters what its kind says.
    void open(const PanelKind &kind)
    {
        platform::Dictionary config = kind.config;
        SequencerCall &call = kind.isGroup ? showGroup(0, config) : showView(0, config);
        const bool isError = QString(kind.name).endsWith("Error");
        const bool isMessage = QString(kind.name).startsWith("GroupMessage");
        if (isMessage)
            ASSERT_TRUE(call.waitUntilFinished());
        else
            ASSERT_TRUE(waitForPanel(kind.isGroup || isError ? "G1" : "0"));
        if (kind.isRefused)
            expectError("Invalid input");
        for (const QString &text : kind.scans)
            scan(text);
    }
};

/// For a test's name.
inline std::string nameOfKind(const ::testing::TestParamInfo<PanelKind> &info)
{
    return info.param.name;
}

} // namespace testsupport
