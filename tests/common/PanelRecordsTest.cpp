#include "common/PanelRecords.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using interactive::PanelRecords;
using platform::Dictionary;
using platform::Value;

namespace {

const QString question = QStringLiteral("slot SN");
const QString other = QStringLiteral("slot MAC");

TEST(PanelRecords, ARecordBeginsWithItsLengthAloneWhateverWasThere)
{
    PanelRecords records;
    records.store("0", "SN", "old");
    records.start("0", 4, question);
    EXPECT_EQ(records.record("0"), (Dictionary{{"length", 4}}));
    records.store("0", "SN", "new");
    EXPECT_TRUE(records.press("0", "Pass", records.asking("0")));
    EXPECT_EQ(records.record("0"), (Dictionary{{"length", 4}, {"SN", "new"}, {"clickedButton", "Pass"}}));
    records.finish("0");
    EXPECT_EQ(records.record("0"), (Dictionary{{"SN", "new"}, {"clickedButton", "Pass"}}));
}

TEST(PanelRecords, ClearingKeepsTheLengthOrNothing)
{
    PanelRecords records;
    records.start("0", 4, question);
    records.store("0", "SN", "A");
    EXPECT_TRUE(records.clear("0", records.asking("0")));
    EXPECT_EQ(records.record("0"), (Dictionary{{"length", 4}}));
    records.finish("0");
    EXPECT_TRUE(records.clear("0", records.asking("0")));
    EXPECT_FALSE(records.contains("0"));
}

TEST(PanelRecords, WhatAPressWritesDoesNotComeIntoTheRecordOfALaterAsking)
{
    PanelRecords records;
    records.start("0", 4, question);
    const quint64 former = records.asking("0");
    records.forget("0");
    EXPECT_FALSE(records.press("0", "Pass", former));
    EXPECT_FALSE(records.contains("0"));
    records.start("0", 4, question);
    records.store("0", "SN", "A");
    EXPECT_FALSE(records.press("0", "Pass", former));
    EXPECT_FALSE(records.clear("0", former));
    EXPECT_FALSE(records.forget("0", former));
    EXPECT_EQ(records.record("0"), (Dictionary{{"length", 4}, {"SN", "A"}}));
}

TEST(PanelRecords, APanelThatNobodyAskedForNotesItsButton)
{
    PanelRecords records;
    EXPECT_TRUE(records.press("0", "Pass", records.asking("0")));
    EXPECT_EQ(records.record("0"), (Dictionary{{"clickedButton", "Pass"}}));
}

TEST(PanelRecords, DiscardingTellsWhetherThereWasAnEntry)
{
    PanelRecords records;
    EXPECT_FALSE(records.discard("G1", "S1"));
    EXPECT_FALSE(records.contains("G1"));
    records.store("G1", "S1", "A");
    EXPECT_TRUE(records.discard("G1", "S1"));
    EXPECT_FALSE(records.discard("G1", "S1"));
    EXPECT_EQ(records.record("G1"), Dictionary());
}

TEST(PanelRecords, FinishingWhatIsNotThereMakesNothing)
{
    PanelRecords records;
    records.finish("0");
    EXPECT_TRUE(records.clear("0", records.asking("0")));
    records.forget("0");
    EXPECT_EQ(records.all(), Dictionary());
}

TEST(PanelRecords, EachQuestionHasItsOwnAnswer)
{
    PanelRecords records;
    records.start("0", 0, question);
    records.store("0", "SN", "A");
    records.keepAnswer("0", question, {});
    records.start("0", 0, other);
    EXPECT_FALSE(records.answer("0", other).has_value());
    records.store("0", "MAC", "B");
    records.keepAnswer("0", other, {});
    ASSERT_TRUE(records.answer("0", question).has_value());
    EXPECT_EQ(records.answer("0", question)->record.toMap().value("SN"), Value("A"));
    EXPECT_EQ(records.answer("0", other)->record.toMap().value("MAC"), Value("B"));
    EXPECT_FALSE(records.answer("1", question).has_value());
}

TEST(PanelRecords, AnAnswerGivenAgainIsTheRecordAgain)
{
    PanelRecords records;
    records.start("G1", 0, question);
    records.store("G1", "S1", "A");
    records.keepAnswer("G1", question, {});
    records.start("G1", 0, other);
    records.giveAgain("G1", question, *records.answer("G1", question));
    EXPECT_EQ(records.record("G1")->value("S1"), Value("A"));
}

TEST(PanelRecords, AnAnswerThatWasForgottenMeanwhileIsNotGivenAgain)
{
    PanelRecords records;
    records.start("G1", 0, question);
    records.store("G1", "S1", "A");
    records.keepAnswer("G1", question, {});
    const auto answer = records.answer("G1", question);
    ASSERT_TRUE(answer.has_value());
    records.forgetAnswers("G1", false);
    records.giveAgain("G1", question, *answer);
    EXPECT_FALSE(records.contains("G1"));
}

TEST(PanelRecords, ACancelledQuestionHasNoAnswer)
{
    PanelRecords records;
    records.start("0", 0, question);
    records.forget("0");
    records.keepAnswer("0", question, {});
    EXPECT_FALSE(records.answer("0", question).has_value());
}

TEST(PanelRecords, ARecordOfWhichNoQuestionIsKnownAnswersAny)
{
    PanelRecords records;
    records.restore({{"0", Dictionary{{"SN", "A"}}}});
    EXPECT_TRUE(records.answer("0", question).has_value());
    records.start("0", 0, other);
    EXPECT_FALSE(records.answer("0", question).has_value());
}

TEST(PanelRecords, WhatIsRestoredTakesThePlaceOfAllThatWasKept)
{
    PanelRecords records;
    records.start("0", 4, question);
    records.store("0", "SN", "A");
    records.keepAnswer("0", question, {});
    records.restore({});
    EXPECT_FALSE(records.answer("0", question));
    EXPECT_EQ(records.kept().answers, 0);
}

TEST(PanelRecords, ForgettingAllAnswersLeavesTheLoop)
{
    PanelRecords records;
    records.startLoop(3, 1);
    records.start("0", 0, question);
    records.keepAnswer("0", question, {});
    records.forgetAllAnswers();
    EXPECT_EQ(records.all().keys(), QStringList{"Loop"});
    EXPECT_TRUE(records.isLoopEnabled());
    EXPECT_FALSE(records.answer("0", question).has_value());
}

TEST(PanelRecords, PassesAreCountedForEachGroup)
{
    PanelRecords records;
    records.startLoop(2, 2);
    EXPECT_FALSE(records.finishPass(0));
    EXPECT_FALSE(records.finishPass(1));
    EXPECT_TRUE(records.finishPass(0));
    EXPECT_TRUE(records.finishPass(1));
}

TEST(PanelRecords, ALoopRecordWithoutAMaximumIsFinishedAndKeepsItsCounts)
{
    PanelRecords records;
    records.restore({{"Loop", Dictionary{{"LoopCount_0", 2}}}});
    EXPECT_TRUE(records.finishPass(0));
    EXPECT_EQ(records.loopRecord(), (Dictionary{{"LoopCount_0", 2}}));
}

TEST(PanelRecords, AGroupWithoutACountBeginsAtZero)
{
    PanelRecords records;
    records.restore({{"Loop", Dictionary{{"LoopMax", 2}}}});
    EXPECT_FALSE(records.finishPass(1));
    EXPECT_EQ(records.loopRecord(), (Dictionary{{"LoopMax", 2}, {"LoopCount_1", 1}}));
}

TEST(PanelRecords, WhatElseTheLoopRecordHoldsStaysWhenALoopBegins)
{
    PanelRecords records;
    records.restore({{"Loop", Dictionary{{"Operator", "N. N."}}}, {"G1", Dictionary{{"S1", "A"}}}});
    records.startLoop(3, 1);
    EXPECT_EQ(records.loopRecord(), (Dictionary{{"Operator", "N. N."}, {"LoopMax", 3}, {"LoopCount_0", 0}}));
    EXPECT_EQ(records.record("G1"), (Dictionary{{"S1", "A"}}));
}

TEST(PanelRecords, LoopModeBeginsWithTwoPasses)
{
    PanelRecords records;
    EXPECT_FALSE(records.isLoopEnabled());
    records.startLoop(2, 1);
    EXPECT_TRUE(records.isLoopEnabled());
    records.startLoop(1, 1);
    EXPECT_FALSE(records.isLoopEnabled());
}

TEST(PanelRecords, WhatWasHandedOutIsNeverWrittenAgain)
{
    PanelRecords records;
    records.start("0", 4, question);
    const Dictionary before = records.all();
    const Dictionary record = *records.record("0");
    records.store("0", "SN", "A");
    records.startLoop(2, 1);
    EXPECT_EQ(before, (Dictionary{{"0", Dictionary{{"length", 4}}}}));
    EXPECT_EQ(record, (Dictionary{{"length", 4}}));
}

TEST(PanelRecords, NothingIsLostWhenManyThreadsWriteAndRead)
{
    PanelRecords records;
    constexpr int Threads = 4;
    constexpr int Entries = 200;
    std::atomic<bool> ended{false};
    std::thread reader([&] {
        while (!ended)
            static_cast<void>(platform::description(records.all()));
    });
    std::vector<std::thread> writers;
    for (int i = 0; i < Threads; ++i) {
        writers.emplace_back([&records, i] {
            for (int j = 0; j < Entries; ++j)
                records.store("G1", QStringLiteral("S%1-%2").arg(i).arg(j), QString::number(j));
        });
    }
    for (std::thread &writer : writers)
        writer.join();
    ended = true;
    reader.join();
    EXPECT_EQ(records.record("G1")->size(), Threads * Entries);
}

TEST(PanelRecords, HowMuchIsKeptGrowsWithTheQuestionsAndNotWithTheirAnswers)
{
    PanelRecords records;
    for (int call = 0; call < 5; ++call) {
        records.start("0", 4, question);
        records.store("0", "SN", QString::number(call));
        records.finish("0");
        records.keepAnswer("0", question, {});
    }
    EXPECT_EQ(records.kept().records, 1);
    EXPECT_EQ(records.kept().askings, 1);
    EXPECT_EQ(records.kept().answers, 1);
    records.start("0", 4, other);
    records.keepAnswer("0", other, {});
    EXPECT_EQ(records.kept().answers, 2);
    records.forgetAllAnswers();
    EXPECT_EQ(records.kept().answers, 0);
}

TEST(PanelRecords, WhatIsAskedForTwiceWithoutAChangeIsOneDictionary)
{
    PanelRecords records;
    records.start("0", 4, question);
    const Dictionary first = records.all();
    EXPECT_TRUE(first.isSharedWith(records.all()));
    records.store("0", "SN", "A");
    EXPECT_FALSE(first.isSharedWith(records.all()));
    EXPECT_EQ(records.all(), (Dictionary{{"0", Dictionary{{"length", 4}, {"SN", "A"}}}}));
}

TEST(PanelRecords, WhatWasRestoredFromIsNeverWritten)
{
    PanelRecords records;
    const Dictionary given{{"0", Dictionary{{"SN", "A"}}}};
    records.restore(given);
    records.store("0", "SN", "B");
    records.forget("0");
    EXPECT_EQ(given, (Dictionary{{"0", Dictionary{{"SN", "A"}}}}));
}

} // namespace
