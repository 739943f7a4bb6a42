#include "common/EntryRule.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <vector>

using interactive::EntryRule;
using interactive::NumberRule;
using interactive::Verdict;
using interactive::entries::judged;
using interactive::entries::rangeOf;
using platform::Value;

namespace {

EntryRule form(const QString &pattern)
{
    EntryRule rule;
    rule.pattern = QRegularExpression(QRegularExpression::anchoredPattern(pattern));
    return rule;
}

EntryRule number(const NumberRule &of)
{
    EntryRule rule;
    rule.number = of;
    return rule;
}

EntryRule oneOf(const QStringList &choices)
{
    EntryRule rule;
    rule.choices = choices;
    return rule;
}

struct Case
{
    const char *name;
    EntryRule rule;
    const char *text;
    Value value;     ///< Nothing: refused.
    const char *why; ///< Empty: taken.
};

void PrintTo(const Case &each, std::ostream *stream)
{
    *stream << each.name;
}

const NumberRule volts{3.0, 3.6, 2, "V", ','};
const NumberRule whole{{}, {}, 0, {}, '.'};

const std::vector<Case> cases = {
    {"AnyTextWithoutARule", {}, "x", "x", ""},
    {"AlsoTheEmptyOne", {}, "", "", ""},

    {"TheWholeEntryMatches", form("SN[0-9]{3}"), "SN123", "SN123", ""},
    {"NotABeginningOfIt", form("SN[0-9]{3}"), "SN1234", {}, "it does not have the form that is asked for"},
    {"NotAnEndOfIt", form("SN[0-9]{3}"), "xSN123", {}, "it does not have the form that is asked for"},
    {"EachAlternativeIsWhole", form("a|ab"), "ab", "ab", ""},
    {"ALineBreakAtItsEndCounts", form("a$"), "a\n", {}, "it does not have the form that is asked for"},
    {"AnEmptyEntryIsJudgedToo", form("x+"), "", {}, "it does not have the form that is asked for"},
    {"AnEmptyEntryMayMatch", form("x*"), "", "", ""},

    {"ANumber", number({}), "3.25", 3.25, ""},
    {"AWholeNumberIsANumber", number({}), "3", 3.0, ""},
    {"ASign", number({}), "-3.5", -3.5, ""},
    {"APlus", number({}), "+3.5", 3.5, ""},
    {"NothingBeforeThePoint", number({}), ".5", 0.5, ""},
    {"NothingBeforeThePointWhereTheCommaRules", number(volts), "+.5", {}, "it must be 3,00 to 3,60 V"},
    {"NothingBehindThePoint", number({}), "5.", 5.0, ""},
    {"ThePointAlone", number({}), ".", {}, "it is no number"},
    {"TheSignAlone", number({}), "-", {}, "it is no number"},
    {"TwoPoints", number({}), "1.2.3", {}, "it is no number"},
    {"TwoSigns", number({}), "--3", {}, "it is no number"},
    {"ACommaWhereThePointRules", number({}), "3,5", {}, "it is no number"},
    {"ACommaOfTheLocale", number(volts), "3,5", 3.5, ""},
    {"ThePointIsAlwaysTaken", number(volts), "3.5", 3.5, ""},
    {"APointAndAComma", number(volts), "1.003,5", {}, "it is no number"},
    {"AnExponent", number({}), "1e3", {}, "it is no number"},
    {"HexadecimalDigits", number({}), "0x10", {}, "it is no number"},
    {"NotANumber", number({}), "nan", {}, "it is no number"},
    {"Infinity", number({}), "inf", {}, "it is no number"},
    {"DigitsOfAnotherScript", number({}), "٣", {}, "it is no number"},
    {"Nothing", number({}), "", {}, "it is no number"},
    {"Blanks", number({}), "   ", {}, "it is no number"},
    {"BlanksAround", number({}), "  3.5 ", 3.5, ""},
    {"TheUnitBehindIt", number(volts), "3.3 V", 3.3, ""},
    {"TheUnitAtOnce", number(volts), "3.3V", 3.3, ""},
    {"AnotherUnit", number(volts), "3.3 A", {}, "it is no number"},
    {"TheLowerLimit", number(volts), "3.00", 3.0, ""},
    {"TheUpperLimit", number(volts), "3.60", 3.6, ""},
    {"BelowTheLimits", number(volts), "2.99", {}, "it must be 3,00 to 3,60 V"},
    {"AboveTheLimits", number(volts), "3.61", {}, "it must be 3,00 to 3,60 V"},
    {"MoreDecimals", number(volts), "3.301", {}, "it has more than 2 decimals"},
    {"MoreDecimalsThatAreZeros", number(volts), "3.300", {}, "it has more than 2 decimals"},
    {"OpenAbove", number({3.0, {}, {}, {}, '.'}), "1000000", 1000000.0, ""},
    {"BelowTheOnlyLimit", number({3.0, {}, {}, "V", '.'}), "2", {}, "it must be at least 3 V"},
    {"AboveTheOnlyLimit", number({{}, 3.5, {}, {}, '.'}), "4", {}, "it must be at most 3.5"},
    {"AWholeNumber", number(whole), "42", qlonglong(42), ""},
    {"AWholeNumberWithAPoint", number(whole), "42.", qlonglong(42), ""},
    {"ANegativeWholeNumber", number(whole), "-42", qlonglong(-42), ""},
    {"DecimalsWhereThereAreNone", number(whole), "42.0", {}, "it must be a whole number"},

    {"AChoice", oneOf({"Red", "Green"}), "Green", "Green", ""},
    {"NoChoice", oneOf({"Red", "Green"}), "Blue", {}, "it is none of the choices"},
    {"InOtherLetters", oneOf({"Red", "Green"}), "gREEN", "Green", ""},
    {"TheExactOneOfTwo", oneOf({"red", "RED"}), "RED", "RED", ""},
    {"OneOfTwoInOtherLetters", oneOf({"red", "RED"}), "Red", {}, "it fits 2 of the choices"},
    {"ABeginning", oneOf({"Red", "Green"}), "gr", "Green", ""},
    {"ABeginningOfTwo", oneOf({"Green", "Grey"}), "gr", {}, "it fits 2 of the choices"},
    {"AChoiceThatBeginsAnother", oneOf({"Gr", "Green"}), "gr", "Gr", ""},
    {"NothingChosen", oneOf({"Red"}), "", {}, "nothing is chosen"},
    {"ABlank", oneOf({"Red"}), " ", {}, "it is none of the choices"},
};

class EntryRuleTest : public testing::TestWithParam<Case>
{};

TEST_P(EntryRuleTest, Judges)
{
    const Verdict verdict = judged(QString::fromUtf8(GetParam().text), GetParam().rule);
    EXPECT_EQ(verdict.value, GetParam().value);
    EXPECT_EQ(verdict.value.metaType(), GetParam().value.metaType());
    EXPECT_EQ(verdict.why, GetParam().why);
    EXPECT_EQ(verdict.isAccepted(), *GetParam().why == '\0');
}

INSTANTIATE_TEST_SUITE_P(Each, EntryRuleTest, testing::ValuesIn(cases),
                         [](const auto &each) { return each.param.name; });

TEST(NumberRangeTest, ManyDigitsAreNoNumber)
{
    EXPECT_EQ(judged(QString(400, QLatin1Char('9')), number({})).why, "it is no number");
    EXPECT_EQ(judged(QString(400, QLatin1Char('9')), number(whole)).why, "it is no number");
}

TEST(NumberRangeTest, AWholeNumberThatNoIntegerHoldsIsADecimal)
{
    const Verdict verdict = judged("9223372036854775808", number(whole));
    EXPECT_EQ(verdict.value, 9223372036854775808.0);
}

TEST(NumberRangeTest, LimitsAreShownInTheEntriesDecimals)
{
    EXPECT_EQ(rangeOf({1.0, 2.5, 1, "mA", '.'}), "1.0 to 2.5 mA");
    EXPECT_EQ(rangeOf({1.0, 2.55, 1, {}, '.'}), "1.0 to 2.55");
    EXPECT_EQ(rangeOf({{}, {}, 1, "mA", '.'}), "");
}

} // namespace
