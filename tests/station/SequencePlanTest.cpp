#include "station/RunningSequence.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::description;
using station::planSequences;
using station::SequenceKind;
using station::StationConfig;

namespace {

StationConfig stationWith(const QList<station::SequenceEntry> &sequences)
{
    StationConfig config;
    config.systemGroups = {"A", "B", "A"};
    config.systemSlots = {"S1", "S1", "S2"};
    config.sequences = sequences;
    return config;
}

/// "owner [systems] globals" for each sequence.
QStringList inWords(const QList<station::RunningSequence::Plan> &plans)
{
    QStringList found;
    for (const station::RunningSequence::Plan &plan : plans) {
        QStringList systems;
        for (const int system : plan.systems)
            systems.append(QString::number(system));
        found.append(plan.owner.name() + " [" + systems.join(",") + "] " + description(plan.globals));
    }
    return found;
}

TEST(SequencePlan, ASystemsSequenceKnowsItsSystemSlotAndGroup)
{
    EXPECT_EQ(inWords(planSequences(stationWith({{"/s/a.lua", SequenceKind::System}}))),
              (QStringList{"system 0 [0] {groupName = A; groupNumber = 0; slotName = S1; systemIndex = 0}",
                           "system 1 [1] {groupName = B; groupNumber = 1; slotName = S1; systemIndex = 1}",
                           "system 2 [2] {groupName = A; groupNumber = 0; slotName = S2; systemIndex = 2}"}));
}

TEST(SequencePlan, AGroupsSequenceKnowsItsGroupAndSpeaksForItsSystems)
{
    EXPECT_EQ(inWords(planSequences(stationWith({{"/s/a.lua", SequenceKind::Group}}))),
              (QStringList{"group A [0,2] {groupName = A; groupNumber = 0}",
                           "group B [1] {groupName = B; groupNumber = 1}"}));
}

TEST(SequencePlan, TheStationsSequenceSpeaksForAllSystems)
{
    EXPECT_EQ(inWords(planSequences(stationWith({{"/s/a.lua", SequenceKind::Station}}))),
              QStringList{"station [0,1,2] {}"});
}

TEST(SequencePlan, ScriptsFollowOneAnotherAsTheConfigurationHasThem)
{
    const auto plans = planSequences(
        stationWith({{"/s/b.lua", SequenceKind::Station}, {"/s/sub/a.lua", SequenceKind::Group}}));
    QStringList scripts;
    for (const station::RunningSequence::Plan &plan : plans)
        scripts.append(plan.script + " " + plan.owner.sequence);
    EXPECT_EQ(scripts, (QStringList{"/s/b.lua b.lua", "/s/sub/a.lua a.lua", "/s/sub/a.lua a.lua"}));
}

TEST(SequencePlan, AStationWithoutSystemsHasSequencesForTheStationAlone)
{
    StationConfig config = stationWith({{"/s/a.lua", SequenceKind::System},
                                        {"/s/a.lua", SequenceKind::Group},
                                        {"/s/a.lua", SequenceKind::Station}});
    config.systemGroups.clear();
    config.systemSlots.clear();
    EXPECT_EQ(inWords(planSequences(config)), QStringList{"station [] {}"});
}

} // namespace
