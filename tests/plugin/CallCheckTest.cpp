#include "plugin/CallCheck.h"

#include "platform/LogFormat.h"
#include "plugin/InteractiveView.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include "common/Messages.h"

using interactive::reportOnCall;
using interactive::StationMap;
using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

Value unknown()
{
    return Value::fromValue(KVKUnknownValue());
}

const StationMap Station(Array{"G1", "G1"}, Array{"S1", "S2"});

/// The keys of what is wrong with a group's call, in the order in which it is told.
QStringList wrongKeys(const Dictionary &config, const StationMap &station = Station)
{
    QStringList keys;
    for (const KVKCallProblem &problem :
         reportOnCall("showGroupView", {qlonglong{0}, config}, station).problems)
        keys.append(problem.part.keys.join('.'));
    return keys;
}

TEST(CallCheck, SaysNothingThatDependsOnAnUnknownValue)
{
    // Whether a hint needs an entry, a default fits, or "OK" is there.
    EXPECT_EQ(wrongKeys({{"input", unknown()}, {"hint", "h"}, {"default", Dictionary{{"S1", "x"}}}}),
              QStringList());
    EXPECT_EQ(wrongKeys({{"input", unknown()}, {"pattern", Dictionary{{"S9", "x"}}}}), QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"autoConfirm", true}, {"button", unknown()}}),
              QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}},
                         {"choices", Array{"a", unknown()}},
                         {"default", Dictionary{{"S1", "b"}}}}),
              QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"length", unknown()}, {"choices", Array{"a", "bb"}}}),
              QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"number", Dictionary{{"min", 9}, {"max", unknown()}}}}),
              QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"number", unknown()}, {"pattern", "x"}}), QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"S9"}}, {"message", unknown()}}), QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"switch", unknown()}}), QStringList());
    EXPECT_EQ(wrongKeys({{"input", unknown()}, {"switch", Array{"length"}}}), QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"choices", Array{unknown()}}}), QStringList());
    const Dictionary automatic{
        {"input", Array{"SN"}}, {"autoConfirm", true}, {"button", Array{"Cancel", unknown()}}};
    EXPECT_TRUE(reportOnCall("showView", {qlonglong{0}, automatic}, Station).problems.isEmpty());
}

TEST(CallCheck, SaysNothingOfDefaultsThatAnUnknownRuleMayAllow)
{
    const Dictionary equal{{"S1", 1}, {"S2", 1}};
    EXPECT_EQ(wrongKeys({{"input", Array{"S1", "S2"}}, {"default", equal}}), QStringList{"default"});
    EXPECT_EQ(wrongKeys({{"input", Array{"S1", "S2"}}, {"default", equal}, {"number", unknown()}}),
              QStringList());
}

TEST(CallCheck, SaysNothingOfALabelThatMayBeTheUnknownOne)
{
    const Array labels{unknown(), "SN"};
    const auto problems = [&labels](Dictionary config) {
        config.insert("input", labels);
        return reportOnCall("showView", {qlonglong{0}, config}, Station).problems;
    };
    EXPECT_TRUE(problems({{"pattern", Dictionary{{"Other", "x"}}}}).isEmpty());
    // For the first of the labels, which is not the one that has the pattern.
    EXPECT_TRUE(problems({{"pattern", Dictionary{{"SN", "a"}}}, {"default", "x"}}).isEmpty());
}

TEST(CallCheck, TakesAnEmptyListOrTableForKnown)
{
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"choices", Array()}}), QStringList{"choices"});
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"choices", Dictionary()}}), QStringList{"choices"});
}

TEST(CallCheck, SaysWhatHoldsWhateverTheUnknownValuesAre)
{
    EXPECT_EQ(wrongKeys({{"input", Array{"S9", unknown()}}, {"length", unknown()}}), QStringList{"input"});
    EXPECT_EQ(wrongKeys({{"mesage", unknown()}}), QStringList{"mesage"});
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"number", Dictionary{{"mni", 1}, {"max", unknown()}}}}),
              QStringList{"number"});
    EXPECT_EQ(wrongKeys({{"hint", unknown()}, {"timeLimit", "soon"}}), QStringList{"timeLimit"});
}

TEST(CallCheck, TellsOfEachKey)
{
    EXPECT_EQ(wrongKeys({{"input", Array{"S9"}}, {"column", 9}, {"hint", 1}, {"unique", "x"}, {"image", 3}}),
              (QStringList{"input", "column", "hint", "unique", "image"}));
}

TEST(CallCheck, JudgesAnUnknownStationByWhatHoldsForEach)
{
    const StationMap none;
    EXPECT_EQ(wrongKeys({{"input", Array{"A", "B"}}, {"column", 7}}, none), QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"A", "A"}}}, none), QStringList{"input"});
    EXPECT_EQ(
        wrongKeys({{"input", Array{"A"}}, {"pattern", Dictionary{{"A", "x"}}}, {"hint", "h"}, {"column", 2}},
                  none),
        QStringList());
    EXPECT_EQ(wrongKeys({{"message", "x"}}, none), QStringList());
    EXPECT_EQ(wrongKeys({{"button", Array{"OK"}}, {"column", 1}}, none), QStringList());
    EXPECT_EQ(wrongKeys({{"input", Array{"A"}}, {"pattern", Dictionary{{"B", "x"}}}}, none), QStringList());
    EXPECT_TRUE(reportOnCall("showView", {qlonglong{99}, unknown()}, none).problems.isEmpty());
    EXPECT_EQ(reportOnCall("showView", {1.5, unknown()}, none).problems.size(), 1);
}

TEST(CallCheck, JudgesACallByItsFunction)
{
    const Dictionary named{{"input", Array{"Serial number"}}};
    EXPECT_TRUE(reportOnCall("showView", {qlonglong{0}, named}, Station).problems.isEmpty());
    EXPECT_EQ(reportOnCall("showGroupView", {qlonglong{0}, named}, Station).problems.size(), 1);
    const Dictionary asked{{"input", Array{"S1"}}};
    EXPECT_EQ(reportOnCall("showView", {qlonglong{2}, asked}, Station).problems.size(), 1);
    EXPECT_EQ(reportOnCall("showGroupView", {qlonglong{1}, asked}, Station).problems.size(), 1);
}

TEST(CallCheck, JudgesTheIndexOfEachFunction)
{
    const auto told = [](const char *function, const Value &index, const StationMap &station = Station) {
        QStringList firstWords;
        for (const KVKCallProblem &problem : reportOnCall(function, {index}, station).problems) {
            EXPECT_EQ(problem.part.argument, 1);
            EXPECT_TRUE(problem.part.keys.isEmpty());
            firstWords.append(problem.text.section(' ', 0, 0));
        }
        return firstWords;
    };
    for (const char *function : {"showView", "getData", "isLoopFinished", "showGroupView"}) {
        EXPECT_EQ(told(function, qlonglong{0}), QStringList());
        EXPECT_EQ(told(function, unknown()), QStringList());
        EXPECT_EQ(told(function, qlonglong{99}, StationMap()), QStringList());
        const QStringList wrong = told(function, qlonglong{2});
        ASSERT_EQ(wrong.size(), 1) << function;
        EXPECT_TRUE(wrong.first().startsWith(function)) << wrong.first().toStdString();
    }
    const KVKCallReport beyond = reportOnCall("showView", {qlonglong{2}}, Station);
    EXPECT_EQ(beyond.problems.first().text,
              platform::formatMessage(interactive::messages::NoSuchSystem, {"showView", 2, 1}));
    // Of two systems and one group.
    EXPECT_EQ(told("getData", qlonglong{1}), QStringList());
    EXPECT_EQ(told("isLoopFinished", qlonglong{1}).size(), 1);
    EXPECT_EQ(told("setLoop", qlonglong{99}), QStringList());
}

TEST(CallCheck, NamesTheKeyOfEachProblem)
{
    EXPECT_EQ(wrongKeys({{"input", "S1"}}), QStringList{"input"});
    EXPECT_EQ(wrongKeys({{"switch", 5}}), QStringList{"switch"});
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"button", "OK"}}), QStringList{"button"});
    EXPECT_EQ(wrongKeys({{"switch", Array{"length"}}}), QStringList{"switch"});
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"switch", Array{"S2"}}}), QStringList{"switch"});
    EXPECT_EQ(wrongKeys({{"input", Array{"S9"}}, {"switch", Array{"S1"}}}), QStringList{"input"});
    EXPECT_EQ(wrongKeys({{"input", Array{"S1"}}, {"column", 9}}), QStringList{"column"});
    EXPECT_EQ(wrongKeys({{"message", "x"}, {"input", Array{"S9"}}}), QStringList());
    const KVKCallReport report = reportOnCall("showView", {qlonglong{0}, Dictionary{{"image", 5}}}, Station);
    EXPECT_TRUE(report.pictures.isEmpty());
}

TEST(CallCheck, TellsOfLabelsThatAreNamedOftenWhatIsWrongWithThem)
{
    const auto whatIsWrong = [](const Array &labels, const StationMap &station) {
        const KVKCallReport report =
            reportOnCall("showGroupView", {qlonglong{0}, Dictionary{{"input", labels}}}, station);
        return report.problems.isEmpty() ? QString() : report.problems.first().text;
    };
    const QString twice = whatIsWrong({"S1", "S1"}, Station);
    EXPECT_FALSE(twice.isEmpty());
    // Not that there are more labels than slots, of which nobody knows how many there are.
    EXPECT_EQ(whatIsWrong({"S1", "S1"}, StationMap()), twice);
    EXPECT_EQ(whatIsWrong(Array(7, "S1"), StationMap()), twice);
}

TEST(CallCheck, NamesThePictures)
{
    const KVKCallReport report =
        reportOnCall("showView", {unknown(), Dictionary{{"image", "a.png"}}}, Station);
    ASSERT_EQ(report.pictures.size(), 1);
    EXPECT_EQ(report.pictures.first().path, "a.png");
    EXPECT_EQ(report.pictures.first().part.argument, 2);
    EXPECT_EQ(report.pictures.first().part.keys, QStringList{"image"});
}

TEST(CallCheck, IsOfferedToTheHostBeforeTheViewIsLoaded)
{
    interactive::InteractiveView plugin;
    auto *check = qobject_cast<KVKExtensionConfigurationCheck *>(&plugin);
    ASSERT_NE(check, nullptr);
    EXPECT_EQ(check->lookAtCall("showView", {unknown(), Dictionary{{"buton", 1}}}).problems.size(), 1);
    EXPECT_TRUE(check->lookAtCall("setLoop", {qlonglong{3}}).problems.isEmpty());
}

} // namespace
