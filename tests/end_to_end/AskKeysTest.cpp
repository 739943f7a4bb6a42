#include "tests/end_to_end/StationRun.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

/// What one key asks for, what the operator does about it, and what comes back.
struct Case
{
    const char *name;
    const char *config; ///< Besides "input".
    const char *acts;   ///< The operator's script once the panel stands there.
    const char *answer; ///< Of the label SN as Lua tells it; the error's code for a refused configuration.
};

void PrintTo(const Case &what, std::ostream *stream)
{
    *stream << what.name;
}

const QString Ok = R"(operator.click({ panel = "0", title = "OK" }))";
const QString Acknowledge = R"(operator.click({ panel = "G1", title = "OK" }))";

class AskKeys : public ::testing::TestWithParam<Case>
{
protected:
    static void run(const QString &panel, const QString &end)
    {
        StationRun station;
        station.perSystem(QStringLiteral(R"(
            local config = { %1 }
            config.input = { "SN" }
            local answer, problem = showView(systemIndex, config)
            local got = problem and tostring(problem.code) or answer and tostring(answer.SN) or "nothing"
            assert(got == %2, "got " .. got)
            return true
        )")
                              .arg(GetParam().config, QStringLiteral("[[%1]]").arg(GetParam().answer)));
        station.operatorDoes(QStringLiteral(R"(
            local function told() return operator.tree("0-StatusLine").text end
            operator.waitForPanel("%1", 30)
            %2
            %3
            operator.waitForPanelGone("%1", 30)
        )")
                                 .arg(panel, GetParam().acts, end));
        station.passes();
        EXPECT_EQ(station.outcome(0), "passed") << station.everything().toStdString();
    }
};

class AskKeysAnswered : public AskKeys
{};
TEST_P(AskKeysAnswered, GiveTheAnswer)
{
    run("0", Ok);
}

class AskKeysEnding : public AskKeys
{};
TEST_P(AskKeysEnding, EndThePanelThemselves)
{
    run("0", {});
}

class AskKeysRefused : public AskKeys
{};
TEST_P(AskKeysRefused, AreRefusedWithTheirCode)
{
    run("G1", Acknowledge);
}

const auto NameOf = [](const ::testing::TestParamInfo<Case> &which) { return which.param.name; };

INSTANTIATE_TEST_SUITE_P(
    Keys, AskKeysAnswered,
    ::testing::Values(
        Case{"Pattern", "pattern = '[0-9]+'",
             R"(operator.scan("AB") assert(told():find("form")) operator.scan("12") assert(told() == ""))",
             "12"},
        Case{"HintOfALength", "length = 3, hint = 'Three'",
             R"(operator.scan("AB") assert(told():find("^Three")) operator.scan("ABC"))", "ABC"},
        Case{
            "Number", "number = { min = 3, max = 4, decimals = 1, unit = 'V' }",
            R"(operator.scan("5") assert(told():find("3.0 to 4.0 V")) operator.scan("3.55") operator.scan("3.5"))",
            "3.5"},
        Case{"NumberOfALocaleWithoutAComma", "number = {}", R"(operator.scan("3,5") operator.scan("7"))",
             "7.0"},
        Case{"ChoiceScanned", "choices = { 'Red', 'Green' }", R"(operator.scan("Green"))", "Green"},
        Case{"ChoiceByItsBeginning", "choices = { 'Red', 'Rose', 'Green' }",
             R"(operator.scan("r") assert(told():find("2 of the choices")) operator.scan("ro"))", "Rose"},
        Case{"ChoiceWithBlanksAndQuotes", "choices = { 'a \"b\" c', '\195\132' }", R"(operator.scan("a"))",
             "a \"b\" c"},
        Case{"DefaultConfirmedByOk", "default = 'A1'", "", "A1"},
        Case{"DefaultConfirmedByReturn", "default = 'A1'", R"(operator.scan(""))", "A1"},
        Case{"DefaultReplaced", "default = 'A1'", R"(operator.scan("B"))", "B"},
        Case{"DefaultOfANumber", "default = 2, number = { decimals = 0 }", "", "2"},
        Case{"PlaceholderIsNoText", "placeholder = 'Scan the label'",
             R"(assert(operator.tree("0-SN").text == ""))", ""},
        Case{"PlaceholderBesideAnEntry", "placeholder = 'Scan the label', length = 2",
             R"(operator.scan("AB"))", "AB"},
        Case{"AutoConfirmSwitchedOff", "autoConfirm = false", R"(operator.scan("AB"))", "AB"}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(Keys, AskKeysEnding,
                         ::testing::Values(Case{"AutoConfirm", "autoConfirm = true", R"(operator.scan("AB"))",
                                                "AB"},
                                           Case{"AutoConfirmAfterARefusal", "autoConfirm = true, length = 2",
                                                R"(operator.scan("A") operator.scan("AB"))", "AB"},
                                           Case{"AutoConfirmOfADefault", "autoConfirm = true, default = 'A1'",
                                                R"(operator.scan(""))", "A1"}),
                         NameOf);

INSTANTIATE_TEST_SUITE_P(
    Keys, AskKeysRefused,
    ::testing::Values(Case{"BrokenPattern", "pattern = '['", "", "110"},
                      Case{"HintThatIsNoText", "hint = 5", "", "111"},
                      Case{"UnknownScope", "unique = 'town'", "", "113"},
                      Case{"NumberWithSwappedLimits", "number = { min = 2, max = 1 }", "", "114"},
                      Case{"NoChoices", "choices = {}", "", "115"},
                      Case{"ChoiceTwice", "choices = { 'a', 'a' }", "", "115"},
                      Case{"DefaultThatWouldBeRefused", "default = 'A', pattern = '[0-9]+'", "", "116"},
                      Case{"DefaultOfAnotherLength", "default = 'A', length = 2", "", "116"},
                      Case{"PlaceholderThatIsNoText", "placeholder = {}", "", "117"},
                      Case{"AutoConfirmThatIsNoTruth", "autoConfirm = 'yes'", "", "118"},
                      Case{"AutoConfirmWithoutOk", "autoConfirm = true, button = { 'Done' }", "", "118"}),
    NameOf);

TEST(AskKeysOfAGroup, DefaultsAreConfirmedAndTheLastEntryEndsThePanel)
{
    StationRun station;
    station.slotNames({"S1", "S2", "S3"}).perGroup(R"(
        local answer, problem = showGroupView(groupNumber, {
            input = { "S1", "S2", "S3" }, default = { S1 = "A", S3 = "C" }, autoConfirm = true })
        assert(problem == nil, problem and problem.message)
        return answer.S1 == "A" and answer.S2 == "X" and answer.S3 == "Y"
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.scan("")
        operator.scan("X")
        operator.scan("Y")
        operator.waitForPanelGone("G1", 30)
    )");
    station.passes();
    EXPECT_EQ(station.outcome("G1"), "passed") << station.everything().toStdString();
}

} // namespace
