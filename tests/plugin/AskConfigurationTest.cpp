#include "plugin/AskConfiguration.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using interactive::AskContext;
using interactive::AskReading;
using interactive::AskRules;
using interactive::readAskRules;
using interactive::StationMap;
using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

class AnyFunction : public platform::Callback
{
public:
    Array call(const Array &) override { return {}; }
};

const StationMap station(Array{"G1", "G1", "G1"}, Array{"S1", "S2", "S3"});
const Value function =
    QVariant::fromValue<std::shared_ptr<platform::Callback>>(std::make_shared<AnyFunction>());

AskContext onSystem()
{
    return {false, false, {"SN"}, {"OK"}, 0, '.'};
}
AskContext onGroup()
{
    return {true, false, {"S1", "S2"}, {"Cancel", "Clear", "OK"}, 0, '.'};
}
AskContext with(AskContext context, qint64 length)
{
    context.length = length;
    return context;
}
AskContext withButtons(AskContext context, const QStringList &buttons)
{
    context.buttons = buttons;
    return context;
}
AskContext without(AskContext context)
{
    context.labels.clear();
    return context;
}
AskContext message()
{
    return {true, true, {}, {}, 0, '.'};
}

struct Case
{
    const char *name;
    AskContext context;
    Dictionary config;
    int code; ///< 0: taken.
    QString message = {};
};

void PrintTo(const Case &each, std::ostream *stream)
{
    *stream << each.name;
}

QString wrong(const char *key, const QString &value, const QString &why)
{
    return QStringLiteral("Invalid config. Value for key '") + QLatin1String(key) + "' is " + value + ": " +
           why + '.';
}

const QString noInput = "nothing is entered on this panel; it goes with 'input'";
const QString text = "must be a text";
const QString forms = "must be a regular expression, or a table that has one for a slot or label";
const QString numbers =
    "must be a table of 'min', 'max', 'decimals' and 'unit', each of which may be left out";
const QString lists = "must be a list of texts with at least one in it";
const QString seconds = "must be a number of seconds, more than 0 and at most 1000000";

const std::vector<Case> cases = {
    {"Nothing", onSystem(), {}, 0},
    {"NothingWithoutInput", without(onSystem()), {}, 0},

    {"Pattern", onSystem(), {{"pattern", "[0-9]+"}}, 0},
    {"PatternForALabel", onSystem(), {{"pattern", Dictionary{{"SN", "x"}}}}, 0},
    {"PatternForASlot", onGroup(), {{"pattern", Dictionary{{"S2", "x"}}}}, 0},
    {"PatternForASlotThatIsNotAsked", onGroup(), {{"pattern", Dictionary{{"S3", "x"}}}}, 0},
    {"PatternInAnEmptyTable", onGroup(), {{"pattern", Array()}}, 0},
    {"PatternForNoSlot",
     onGroup(),
     {{"pattern", Dictionary{{"S9", "x"}}}},
     110,
     wrong("pattern", "{S9 = x}", "'S9' is no slot of the station")},
    {"PatternForNoLabel",
     onSystem(),
     {{"pattern", Dictionary{{"MAC", "x"}}}},
     110,
     wrong("pattern", "{MAC = x}", "'MAC' is no label that is asked for")},
    {"PatternThatIsANumber", onSystem(), {{"pattern", 5}}, 110, wrong("pattern", "5", forms)},
    {"PatternThatIsAList", onSystem(), {{"pattern", Array{"x"}}}, 110, wrong("pattern", "(x)", forms)},
    {"PatternOfANumber",
     onGroup(),
     {{"pattern", Dictionary{{"S1", 1}}}},
     110,
     wrong("pattern", "{S1 = 1}", forms)},
    {"PatternThatDoesNotCompile",
     onSystem(),
     {{"pattern", "ab[0-9"}},
     110,
     wrong(
         "pattern", "ab[0-9",
         "not a regular expression: missing terminating ] for character class, at character 7 of 'ab[0-9'")},
    {"PatternWithoutInput", without(onSystem()), {{"pattern", "x"}}, 110, wrong("pattern", "x", noInput)},
    {"PatternOnAMessage", message(), {{"pattern", "x"}}, 110, wrong("pattern", "x", noInput)},

    {"Hint", onSystem(), {{"hint", "Ten digits"}}, 0},
    {"HintThatIsANumber", onSystem(), {{"hint", 3}}, 111, wrong("hint", "3", text)},
    {"HintWithoutInput", without(onGroup()), {{"hint", "x"}}, 111, wrong("hint", "x", noInput)},

    {"Validate", onSystem(), {{"validate", function}}, 0},
    {"ValidateThatIsAText",
     onSystem(),
     {{"validate", "check"}},
     112,
     wrong("validate", "check", "must be a function (text, slot) that returns true, or false and why")},
    {"ValidateWithoutInput", without(onSystem()), {{"validate", "x"}}, 112, wrong("validate", "x", noInput)},

    {"UniqueGroup", onGroup(), {{"unique", "group"}}, 0},
    {"UniqueStation", onSystem(), {{"unique", "station"}}, 0},
    {"UniqueRun", onGroup(), {{"unique", "run"}}, 0},
    {"UniqueElsewhere",
     onGroup(),
     {{"unique", "Run"}},
     113,
     wrong("unique", "Run", "must be \"group\", \"station\" or \"run\"")},
    {"UniqueThatIsNoText", onGroup(), {{"unique", true}}, 113, wrong("unique", "1", text)},
    {"UniqueNumbers",
     onGroup(),
     {{"unique", "run"}, {"number", Dictionary{{"min", 1}}}},
     113,
     wrong("unique", "run", "equal entries are allowed beside 'number'")},
    {"UniqueChoices",
     onGroup(),
     {{"unique", "run"}, {"choices", Array{"a"}}},
     113,
     wrong("unique", "run", "equal entries are allowed beside 'choices'")},

    {"Number",
     onSystem(),
     {{"number", Dictionary{{"min", 1}, {"max", 2.5}, {"decimals", 2}, {"unit", "V"}}}},
     0},
    {"NumberOfAnyKind", onSystem(), {{"number", Array()}}, 0},
    {"NumberWithLimitsAsTexts", onSystem(), {{"number", Dictionary{{"min", "1"}, {"decimals", "2"}}}}, 0},
    {"NumberOfEqualLimits", onSystem(), {{"number", Dictionary{{"min", 1}, {"max", 1}}}}, 0},
    {"NumberOfMostDecimals", onSystem(), {{"number", Dictionary{{"decimals", 15}}}}, 0},
    {"NumberOfTooManyDecimals",
     onSystem(),
     {{"number", Dictionary{{"decimals", 16}}}},
     114,
     wrong("number", "{decimals = 16}", "'decimals' must be a whole number from 0 to 15, is 16")},
    {"NumberThatIsTrue", onSystem(), {{"number", true}}, 114, wrong("number", "1", numbers)},
    {"NumberThatIsAList", onSystem(), {{"number", Array{1, 2}}}, 114, wrong("number", "(1, 2)", numbers)},
    {"NumberWithATextAsLimit",
     onSystem(),
     {{"number", Dictionary{{"min", "low"}}}},
     114,
     wrong("number", "{min = low}", "'min' must be a number, is low")},
    {"NumberWithoutEnd",
     onSystem(),
     {{"number", Dictionary{{"max", std::numeric_limits<double>::infinity()}}}},
     114,
     wrong("number", "{max = inf}", "'max' must be a number, is inf")},
    {"NumberThatIsNone",
     onSystem(),
     {{"number", Dictionary{{"min", std::nan("")}}}},
     114,
     wrong("number", "{min = nan}", "'min' must be a number, is nan")},
    {"NumberWithLimitsTurnedAround",
     onSystem(),
     {{"number", Dictionary{{"min", 2}, {"max", 1}}}},
     114,
     wrong("number", "{max = 1; min = 2}", "'min' must not be greater than 'max'")},
    {"NumberOfHalfADecimal",
     onSystem(),
     {{"number", Dictionary{{"decimals", 1.5}}}},
     114,
     wrong("number", "{decimals = 1.5}", "'decimals' must be a whole number from 0 to 15, is 1.5")},
    {"NumberOfNegativeDecimals",
     onSystem(),
     {{"number", Dictionary{{"decimals", -1}}}},
     114,
     wrong("number", "{decimals = -1}", "'decimals' must be a whole number from 0 to 15, is -1")},
    {"NumberOfAUnitThatIsANumber",
     onSystem(),
     {{"number", Dictionary{{"unit", 5}}}},
     114,
     wrong("number", "{unit = 5}", "'unit' must be a text, is 5")},
    {"NumberOfAnUnknownPart",
     onSystem(),
     {{"number", Dictionary{{"minimum", 5}}}},
     114,
     wrong("number", "{minimum = 5}", "'minimum' is none of 'min', 'max', 'decimals' and 'unit'")},
    {"NumberBesidePattern",
     onSystem(),
     {{"number", Dictionary{{"min", 1}}}, {"pattern", "x"}},
     114,
     wrong("number", "{min = 1}", "cannot be asked for beside 'pattern'")},
    {"NumberWithoutInput",
     without(onSystem()),
     {{"number", Dictionary{{"min", 1}}}},
     114,
     wrong("number", "{min = 1}", noInput)},

    {"Choices", onSystem(), {{"choices", Array{"a", "b"}}}, 0},
    {"ChoicesThatAreNumbers", onSystem(), {{"choices", Array{1, 2}}}, 0},
    {"ChoicesThatAreNone", onSystem(), {{"choices", Array()}}, 115, wrong("choices", "()", lists)},
    {"ChoicesThatAreAText", onSystem(), {{"choices", "a"}}, 115, wrong("choices", "a", lists)},
    {"ChoicesOfTables",
     onSystem(),
     {{"choices", Array{Value(Array{"a"})}}},
     115,
     wrong("choices", "((a))", lists)},
    {"ChoicesWithAnEmptyOne",
     onSystem(),
     {{"choices", Array{"a", ""}}},
     115,
     wrong("choices", "(a, )", "a choice must not be empty")},
    {"ChoicesWithOneTwice",
     onSystem(),
     {{"choices", Array{1, "1"}}},
     115,
     wrong("choices", "(1, 1)", "'1' is in it twice")},
    {"ChoicesOfAnotherLength",
     with(onSystem(), 2),
     {{"choices", Array{"ab", "abc"}}},
     115,
     wrong("choices", "(ab, abc)", "'abc' does not have the 2 characters that 'length' asks for")},
    {"ChoicesBesideNumber",
     onSystem(),
     {{"choices", Array{"a"}}, {"number", Dictionary{{"min", 1}}}},
     115,
     wrong("choices", "(a)", "cannot be asked for beside 'number'")},
    {"ChoicesBesidePattern",
     onSystem(),
     {{"choices", Array{"a"}}, {"pattern", "a"}},
     115,
     wrong("choices", "(a)", "cannot be asked for beside 'pattern'")},

    {"Default", onSystem(), {{"default", "a"}}, 0},
    {"DefaultThatIsANumber", onSystem(), {{"default", 3.5}, {"number", Dictionary{{"max", 4}}}}, 0},
    {"DefaultOfASlot", onGroup(), {{"default", Dictionary{{"S1", "a"}}}}, 0},
    {"DefaultsOfEqualNumbers",
     onGroup(),
     {{"default", Dictionary{{"S1", 1}, {"S2", 1}}}, {"number", Dictionary{{"min", 1}}}},
     0},
    {"DefaultsThatAreEqual",
     onGroup(),
     {{"default", Dictionary{{"S1", "a"}, {"S2", "a"}}}},
     116,
     wrong("default", "{S1 = a; S2 = a}", "'a' is given to two slots")},
    {"DefaultForAWholeGroup",
     onGroup(),
     {{"default", "a"}},
     116,
     wrong("default", "a", "must be a table of slots, each with a text")},
    {"DefaultOfNoSlot",
     onGroup(),
     {{"default", Dictionary{{"S9", "a"}}}},
     116,
     wrong("default", "{S9 = a}", "'S9' is no slot of the station")},
    {"DefaultThatIsTrue", onSystem(), {{"default", true}}, 116, wrong("default", "1", text)},
    {"DefaultOfAnotherLength",
     with(onSystem(), 3),
     {{"default", "ab"}},
     116,
     wrong("default", "ab", "'ab' would be refused: it has 2 characters instead of 3")},
    {"DefaultOfAnotherForm",
     onSystem(),
     {{"default", "ab"}, {"pattern", "[0-9]"}},
     116,
     wrong("default", "ab", "'ab' would be refused: it does not have the form that is asked for")},
    {"DefaultOutOfLimits",
     onSystem(),
     {{"default", 5}, {"number", Dictionary{{"max", 4}}}},
     116,
     wrong("default", "5", "'5' would be refused: it must be at most 4")},
    {"DefaultThatIsNoChoice",
     onSystem(),
     {{"default", "c"}, {"choices", Array{"a"}}},
     116,
     wrong("default", "c", "'c' would be refused: it is none of the choices")},
    {"DefaultWithoutInput", without(onSystem()), {{"default", "a"}}, 116, wrong("default", "a", noInput)},

    {"Placeholder", onSystem(), {{"placeholder", "Scan here"}}, 0},
    {"PlaceholderThatIsAList",
     onSystem(),
     {{"placeholder", Array{"a"}}},
     117,
     wrong("placeholder", "(a)", text)},

    {"AutoConfirm", onSystem(), {{"autoConfirm", true}}, 0},
    {"AutoConfirmOff", withButtons(onSystem(), {"Pass"}), {{"autoConfirm", false}}, 0},
    {"AutoConfirmAsText",
     onSystem(),
     {{"autoConfirm", "yes"}},
     118,
     wrong("autoConfirm", "yes", "must be true or false")},
    {"AutoConfirmWithoutInput",
     without(onSystem()),
     {{"autoConfirm", true}},
     118,
     wrong("autoConfirm", "1", noInput)},
    {"AutoConfirmWithoutOk",
     withButtons(onSystem(), {"Fail", "Pass"}),
     {{"autoConfirm", true}},
     118,
     wrong("autoConfirm", "1", "the panel needs an \"OK\" button, which it would press")},

    {"TimeLimit", onSystem(), {{"timeLimit", 30}}, 0},
    {"TimeLimitOfAQuestion", without(onSystem()), {{"timeLimit", 0.5}}, 0},
    {"TimeLimitAsText", onSystem(), {{"timeLimit", "30"}}, 0},
    {"TimeLimitOfElevenDays", onSystem(), {{"timeLimit", 1'000'000}}, 0},
    {"TimeLimitBeyond", onSystem(), {{"timeLimit", 1'000'001}}, 119, wrong("timeLimit", "1000001", seconds)},
    {"TimeLimitOfNothing", onSystem(), {{"timeLimit", 0}}, 119, wrong("timeLimit", "0", seconds)},
    {"TimeLimitBelowNothing", onSystem(), {{"timeLimit", -1}}, 119, wrong("timeLimit", "-1", seconds)},
    {"TimeLimitWithoutEnd",
     onSystem(),
     {{"timeLimit", std::numeric_limits<double>::infinity()}},
     119,
     wrong("timeLimit", "inf", seconds)},
    {"TimeLimitThatIsNoNumber",
     onSystem(),
     {{"timeLimit", "soon"}},
     119,
     wrong("timeLimit", "soon", seconds)},
    {"TimeLimitOfAMessage",
     message(),
     {{"timeLimit", 5}},
     119,
     wrong("timeLimit", "5", "nobody answers a group's message; it goes with a panel that waits")},

    {"Image", without(onSystem()), {{"image", "lamp.png"}}, 0},
    {"ImageOnAMessage", message(), {{"image", "lamp.png"}}, 0},
    {"ImageThatIsANumber", onSystem(), {{"image", 1}}, 120, wrong("image", "1", text)},
    {"Instruction", message(), {{"instruction", "# Look"}}, 0},
    {"InstructionThatIsAList",
     onSystem(),
     {{"instruction", Array{"a"}}},
     121,
     wrong("instruction", "(a)", text)},

    {"TheFirstOfTwo", onSystem(), {{"pattern", 5}, {"timeLimit", 0}}, 110, wrong("pattern", "5", forms)},
};

class AskConfigurationTest : public testing::TestWithParam<Case>
{};

TEST_P(AskConfigurationTest, IsTakenOrRefused)
{
    const AskReading reading = readAskRules(GetParam().config, GetParam().context, station);
    ASSERT_EQ(reading.refusal.has_value(), GetParam().code != 0)
        << (reading.refusal ? reading.refusal->message.toStdString() : "");
    if (reading.refusal) {
        EXPECT_EQ(reading.refusal->code, GetParam().code);
        EXPECT_EQ(reading.refusal->message, GetParam().message);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, AskConfigurationTest, testing::ValuesIn(cases),
                         [](const auto &each) { return each.param.name; });

AskRules rulesOf(const Dictionary &config, const AskContext &context)
{
    const AskReading reading = readAskRules(config, context, station);
    EXPECT_FALSE(reading.refusal) << reading.refusal->message.toStdString();
    return reading.rules;
}

TEST(AskReadingTest, APatternIsForTheLabelThatItNamesOrForAll)
{
    const AskRules one = rulesOf({{"pattern", Dictionary{{"S2", "x"}}}}, onGroup());
    EXPECT_FALSE(one.of("S1").pattern);
    EXPECT_TRUE(one.of("S2").pattern);
    const AskRules all = rulesOf({{"pattern", "x"}}, onGroup());
    EXPECT_TRUE(all.of("S1").pattern);
    EXPECT_TRUE(all.of("S2").pattern);
    EXPECT_FALSE(all.of("S3").pattern);
}

TEST(AskReadingTest, ATimeLimitIsReadInMillisecondsAndNeverNone)
{
    EXPECT_EQ(rulesOf({{"timeLimit", 1.5}}, onSystem()).timeLimit, std::chrono::milliseconds(1500));
    EXPECT_EQ(rulesOf({{"timeLimit", 1e-9}}, onSystem()).timeLimit, std::chrono::milliseconds(1));
    EXPECT_FALSE(rulesOf({}, onSystem()).timeLimit);
}

TEST(AskReadingTest, TheLocalesCommaComesWithTheNumber)
{
    AskContext context = onSystem();
    context.decimalPoint = QLatin1Char(',');
    EXPECT_EQ(rulesOf({{"number", Array()}}, context).of("SN").number->decimalPoint, QLatin1Char(','));
}

TEST(AskReadingTest, AValueOfALongTextIsCutInTheMessage)
{
    const AskReading reading = readAskRules({{"unique", QString(5000, 'x')}}, onSystem(), station);
    EXPECT_EQ(reading.refusal->message,
              wrong("unique", QString(80, 'x') + QChar(0x2026), "must be \"group\", \"station\" or \"run\""));
}

TEST(AskReadingTest, AValueOfJustThatLengthIsShownWhole)
{
    const QString value(80, 'x');
    const AskReading reading = readAskRules({{"unique", value}}, onSystem(), station);
    EXPECT_EQ(reading.refusal->message, wrong("unique", value, "must be \"group\", \"station\" or \"run\""));
}

TEST(AskReadingTest, ATruthIsNoNumberAndATextWithBlanksAroundItIsOne)
{
    EXPECT_TRUE(readAskRules({{"timeLimit", true}}, onSystem(), station).refusal);
    EXPECT_EQ(rulesOf({{"timeLimit", " 1.5 "}}, onSystem()).timeLimit, std::chrono::milliseconds(1500));
}

TEST(AskReadingTest, ADefaultIsNotJudgedByRulesThatAreNotComplete)
{
    const AskReading reading =
        readAskRules({{"hint", 1}, {"choices", Array{"a"}}, {"default", "b"}}, onSystem(), station);
    ASSERT_EQ(reading.refusals.size(), 1);
    EXPECT_EQ(reading.refusals.first().key, "hint");
}

TEST(AskReadingTest, OnlyWhatIsJudgedHasAStatusLine)
{
    EXPECT_FALSE(rulesOf({{"placeholder", "x"}, {"default", "a"}}, onSystem()).hasStatusLine());
    EXPECT_TRUE(rulesOf({{"pattern", "x"}}, onSystem()).hasStatusLine());
    EXPECT_TRUE(rulesOf({{"hint", "x"}}, onSystem()).hasStatusLine());
    EXPECT_TRUE(rulesOf({{"choices", Array{"x"}}}, onSystem()).hasStatusLine());
    EXPECT_TRUE(rulesOf({{"number", Array()}}, onSystem()).hasStatusLine());
    EXPECT_TRUE(rulesOf({{"validate", function}}, onSystem()).hasStatusLine());
    EXPECT_TRUE(rulesOf({{"unique", "run"}}, onSystem()).hasStatusLine());
}

} // namespace
