#include "plugin/CallCheck.h"

#include "plugin/InteractiveView.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(wrongKeys({{"input", Array{"A"}}, {"pattern", Dictionary{{"B", "x"}}}}, none), QStringList());
    EXPECT_TRUE(reportOnCall("showView", {qlonglong{99}, unknown()}, none).problems.isEmpty());
    EXPECT_EQ(reportOnCall("showView", {1.5, unknown()}, none).problems.size(), 1);
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
