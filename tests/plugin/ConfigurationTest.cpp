#include "tests/support/PluginFixture.h"

#include <vector>

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

const char *const exclusion = "Invalid config. 'input' and 'switch' cannot be defined at the same time";
const char *const noSlotName = "Invalid config. Slot labels for showGroupView() must be slot name.";
const char *const tooManyLabels = "Invalid config. Invalid slot labels appeared in groupView config.";
const char *const tooManyColumns = "Invalid config. Input column exceeds slot number.";
const char *const twelveOnly = "Invalid config. Allow up to 12 input fields and no duplications.";
const char *const oneOnly = "Invalid config. Allow 1 input field a time in split mode.";

Array labels(int count)
{
    Array made;
    for (int i = 1; i <= count; ++i)
        made.append(QString("S%1").arg(i));
    return made;
}

struct Case
{
    std::string name;
    bool forGroup;
    int slotCount;
    Dictionary config;
    int code; ///< 0: accepted.
    const char *message;
};

const std::vector<Case> cases = {
    // A single system.
    {"SystemWithNothing", false, 4, {}, 0, ""},
    {"SystemWithOneInput", false, 4, {{"input", Array{"A"}}}, 0, ""},
    {"SystemWithTwoInputs", false, 4, {{"input", Array{"A", "B"}}}, 105, oneOnly},
    {"SystemWithThreeSwitches", false, 4, {{"switch", Array{"A", "B", "C"}}}, 0, ""},
    {"SystemWithTwelveEqualSwitches", false, 4, {{"switch", Array{"A", "A", "A", "A", "A"}}}, 0, ""},
    {"SystemWithButtonsOnly", false, 4, {{"button", Array{"No", "Yes"}}}, 0, ""},
    {"SystemWithEmptyInputAndSwitch", false, 4, {{"input", Array{}}, {"switch", Array{"X"}}}, 100, exclusion},
    {"SystemWithBothEmpty", false, 4, {{"input", Array{}}, {"switch", Array{}}}, 100, exclusion},
    {"SystemWithInputAndSwitch", false, 4, {{"input", Array{"A"}}, {"switch", Array{"A"}}}, 100, exclusion},
    {"SystemWithTwoInputsAndSwitch",
     false,
     4,
     {{"input", Array{"A", "B"}}, {"switch", Array{"A"}}},
     105,
     oneOnly},
    {"SystemWithManyColumns", false, 4, {{"input", Array{"A"}}, {"column", 9}}, 0, ""},
    {"SystemWithLabelThatIsNoSlot", false, 4, {{"input", Array{"SN"}}}, 0, ""},

    // Labels that a panel's record needs for itself.
    {"SystemWithLabelLength",
     false,
     4,
     {{"input", Array{"length"}}},
     405,
     "Invalid config. Label 'length' is reserved: the record of a panel needs it for itself."},
    {"SystemWithLabelClickedButton",
     false,
     4,
     {{"input", Array{"clickedButton"}}},
     405,
     "Invalid config. Label 'clickedButton' is reserved: the record of a panel needs it for itself."},
    {"SystemWithLabelSharedInput",
     false,
     4,
     {{"input", Array{"SharedInput"}}},
     405,
     "Invalid config. Label 'SharedInput' is reserved: the record of a panel needs it for itself."},
    {"SystemWithSwitchLength",
     false,
     4,
     {{"switch", Array{"A", "length"}}},
     405,
     "Invalid config. Label 'length' is reserved: the record of a panel needs it for itself."},
    {"SystemWithReservedLabelAndSwitch",
     false,
     4,
     {{"input", Array{"length"}}, {"switch", Array{}}},
     405,
     "Invalid config. Label 'length' is reserved: the record of a panel needs it for itself."},
    {"SystemWithLabelLengthInAnotherCase", false, 4, {{"input", Array{"Length"}}}, 0, ""},

    // Step 4.1: labels must be slot names, for inputs only.
    {"GroupWithNothing", true, 4, {}, 0, ""},
    {"GroupWithEmptyInput", true, 4, {{"input", Array{}}}, 0, ""},
    {"GroupWithAllSlots", true, 4, {{"input", labels(4)}}, 0, ""},
    {"GroupWithStrangeInput", true, 4, {{"input", Array{"S1", "S9"}}}, 101, noSlotName},
    {"GroupWithStrangeSwitch", true, 4, {{"switch", Array{"S9"}}}, 0, ""},
    {"GroupWithStrangeInputAmongTooMany", true, 2, {{"input", labels(3)}}, 101, noSlotName},
    {"GroupWithLabelInAnotherCase", true, 4, {{"input", Array{"s1"}}}, 101, noSlotName},

    // Step 4.2: not more labels than slots.
    {"GroupWithMoreInputsThanSlots", true, 2, {{"input", Array{"S1", "S2", "S1"}}}, 102, tooManyLabels},
    {"GroupWithMoreSwitchesThanSlots", true, 2, {{"switch", Array{"S1", "S2", "X"}}}, 102, tooManyLabels},
    {"GroupWithTooManySwitchesAndEmptyInput",
     true,
     2,
     {{"input", Array{}}, {"switch", Array{"S1", "S2", "X"}}},
     102,
     tooManyLabels},

    // Step 4.3: not more columns than slots, compared as unsigned numbers.
    {"GroupWithColumnZero", true, 4, {{"input", labels(1)}, {"column", 0}}, 0, ""},
    {"GroupWithAsManyColumnsAsSlots", true, 4, {{"input", labels(1)}, {"column", 4}}, 0, ""},
    {"GroupWithOneColumnTooMany", true, 4, {{"input", labels(1)}, {"column", 5}}, 103, tooManyColumns},
    {"GroupWithNegativeColumn", true, 4, {{"input", labels(1)}, {"column", -1}}, 103, tooManyColumns},
    {"GroupWithColumnAsText", true, 4, {{"input", labels(1)}, {"column", " 5 columns"}}, 103, tooManyColumns},
    {"GroupWithColumnThatIsNoNumber", true, 4, {{"input", labels(1)}, {"column", "many"}}, 0, ""},
    {"GroupWithColumnBeforeDuplicates",
     true,
     4,
     {{"input", Array{"S1", "S1"}}, {"column", 5}},
     103,
     tooManyColumns},
    {"GroupWithSwitchesAndTooManyColumns",
     true,
     4,
     {{"switch", labels(2)}, {"column", 5}},
     103,
     tooManyColumns},

    // Step 4.4: up to twelve inputs, each label once.
    {"GroupWithTwelveInputs", true, 13, {{"input", labels(12)}}, 0, ""},
    {"GroupWithThirteenInputs", true, 13, {{"input", labels(13)}}, 104, twelveOnly},
    {"GroupWithThirteenInputsForTwelveSlots",
     true,
     12,
     {{"input", labels(12) + Array{"S1"}}},
     102,
     tooManyLabels},
    {"GroupWithThirteenSwitches", true, 13, {{"switch", labels(13)}}, 0, ""},
    {"GroupWithDoubleInput", true, 4, {{"input", Array{"S1", "S2", "S1"}}}, 104, twelveOnly},
    {"GroupWithDoubleSwitch", true, 4, {{"switch", Array{"S1", "S1"}}}, 104, twelveOnly},

    // The exclusion, when nothing else is wrong.
    {"GroupWithInputAndSwitch", true, 4, {{"input", labels(2)}, {"switch", labels(2)}}, 100, exclusion},
    {"GroupWithEmptyInputAndSwitch", true, 4, {{"input", Array{}}, {"switch", labels(1)}}, 100, exclusion},
    {"GroupWithInputAndEmptySwitch", true, 4, {{"input", labels(1)}, {"switch", Array{}}}, 100, exclusion},
    {"GroupWithBothAndStrangeInput",
     true,
     4,
     {{"input", Array{"S9"}}, {"switch", labels(1)}},
     101,
     noSlotName},
    {"GroupWithBothAndDoubleInput",
     true,
     4,
     {{"input", Array{"S1", "S1"}}, {"switch", labels(1)}},
     104,
     twelveOnly},
    {"GroupWithBothChecksInputsAlone",
     true,
     4,
     {{"input", labels(1)}, {"switch", Array{"X", "X"}}},
     100,
     exclusion},
};

class ConfigurationTest : public testsupport::PluginFixture, public ::testing::WithParamInterface<Case>
{
protected:
    void prepare(int slotCount)
    {
        station.slotNames.clear();
        for (const Value &label : labels(slotCount))
            station.slotNames.append(label.toString());
    }

    void check(const Dictionary &config, const Value &groupNumber, Error *error)
    {
        plugin().checkConfig(config, groupNumber, config.value("input"), config.value("switch"),
                             config.value("button"), error);
    }
};

TEST_P(ConfigurationTest, IsAcceptedOrRefusedWithCodeAndMessage)
{
    prepare(GetParam().slotCount);
    Error error;
    check(GetParam().config, GetParam().forGroup ? Value(0) : Value(), &error);
    const Error expected = GetParam().code == 0 ? Error()
                                                : Error{interactive::InteractivePluginErrorDomain,
                                                        GetParam().code, GetParam().message};
    EXPECT_EQ(error, expected) << error.code << " " << error.localizedDescription.toStdString();
}

TEST_P(ConfigurationTest, IsCheckedWithoutAnyEffect)
{
    prepare(GetParam().slotCount);
    start();
    const Dictionary status = plugin().enableStatus();
    const int before = timesLoggedFrom("");
    check(GetParam().config, GetParam().forGroup ? Value(1) : Value(), nullptr);
    Error error;
    check(GetParam().config, GetParam().forGroup ? Value(1) : Value(), &error);
    EXPECT_EQ(timesLoggedFrom(""), before);
    EXPECT_EQ(plugin().savedData(), Dictionary());
    EXPECT_EQ(plugin().enableStatus(), status);
    EXPECT_EQ(plugin().columns(), 0U);
}

INSTANTIATE_TEST_SUITE_P(EachRule, ConfigurationTest, ::testing::ValuesIn(cases),
                         [](const auto &row) { return row.param.name; });

class ConfigurationErrorTest : public testsupport::PluginFixture
{};

TEST_F(ConfigurationErrorTest, AnAcceptedConfigurationLeavesTheErrorAsItWas)
{
    Error error{"elsewhere", 7, "kept"};
    plugin().checkConfig({{"input", labels(1)}}, 0, labels(1), {}, {}, &error);
    EXPECT_EQ(error, (Error{"elsewhere", 7, "kept"}));
}

TEST_F(ConfigurationErrorTest, ARefusalReplacesAnEarlierError)
{
    Error error{"elsewhere", 7, "lost"};
    plugin().checkConfig({{"input", labels(2)}}, {}, labels(2), {}, {}, &error);
    EXPECT_EQ(error.code, 105);
}

TEST_F(ConfigurationErrorTest, TheButtonsAreNotExamined)
{
    Error error;
    plugin().checkConfig({{"button", 5}}, 0, {}, {}, 5, &error);
    EXPECT_EQ(error, Error());
}

} // namespace
