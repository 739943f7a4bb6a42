#include "station/results/ResultRows.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using station::CallDone;
using station::ResultOwner;
using station::ResultRows;

namespace {

const ResultOwner ofSystem{"ask.lua", 3, {}, 5, "G1", {"S4"}};
const ResultOwner ofGroup{"ask.lua", {}, "G1", 6, "G1", {"S1", "S2"}};
const ResultOwner ofStation{"ask.lua", {}, {}, 7, {}, {"S1", "S2"}};

QStringList answersOf(const ResultOwner &owner, const Value &result, const Array &arguments = {})
{
    CallDone call{"r", owner, {"show", arguments, result, std::nullopt}, 1, {}, {}, {}, 0};
    QStringList rows;
    for (const station::ResultRow &row : rowsOf(call)) {
        if (row.kind != "answer")
            continue;
        QStringList values;
        for (const char *column : {"slot", "label", "value"}) {
            const QJsonValue value = row.values.value(QLatin1String(column));
            values.append(value.isString() ? value.toString() : QString("-"));
        }
        rows.append(values.join('|'));
    }
    return rows;
}

TEST(ResultRowsTest, AnAnswerOfASystemNamesItsSlotAndTheLabel)
{
    EXPECT_EQ(answersOf(ofSystem, Dictionary{{"SN", "A1"}, {"clickedButton", "Pass"}}),
              QStringList{"S4|SN|A1"});
    EXPECT_EQ(answersOf(ofSystem, Dictionary{{"S1", "A1"}}), QStringList{"S4|S1|A1"})
        << "a label that reads as a slot";
}

TEST(ResultRowsTest, AnAnswerOfAGroupNamesEachSlotAndTheLabelOfTheConfiguration)
{
    const Dictionary answer{{"S1", "A1"}, {"S2", "A2"}, {"clickedButton", "Pass"}};
    EXPECT_EQ(answersOf(ofGroup, answer), (QStringList{"S1|-|A1", "S2|-|A2"}));
    EXPECT_EQ(answersOf(ofGroup, answer, {0, Dictionary{{"label", "Board"}}}),
              (QStringList{"S1|Board|A1", "S2|Board|A2"}));
}

TEST(ResultRowsTest, AnAnswerOfTheStationNamesSlotsAsFarAsTheyAreNamed)
{
    EXPECT_EQ(answersOf(ofStation, Dictionary{{"S2", "A2"}, {"SN", "A3"}}),
              (QStringList{"S2|-|A2", "-|SN|A3"}));
}

TEST(ResultRowsTest, AnAnswerWithoutNamedValuesHasNoRows)
{
    for (const Value &result : {Value(true), Value(), Value(Dictionary()), Value(Array{1})})
        EXPECT_EQ(answersOf(ofSystem, result), QStringList());
}

TEST(ResultRowsTest, AValueThatIsNoTextIsJson)
{
    EXPECT_EQ(answersOf(ofGroup, Dictionary{{"S1", true}, {"S2", qlonglong{-1}}}),
              (QStringList{"S1|-|true", "S2|-|-1"}));
    EXPECT_EQ(answersOf(ofSystem, Dictionary{{"a", Array{1, "x"}}, {"b", Value()}, {"c", 0.5}}),
              (QStringList{"S4|a|[1,\"x\"]", "S4|b|-", "S4|c|0.5"}));
}

TEST(ResultRowsTest, TextThatNoDatabaseHoldsIsEscapedAndAllOtherTextIsKept)
{
    EXPECT_EQ(station::storableText("a'b\"c\\d; DROP TABLE runs; -- 槽 😀\n"),
              "a'b\"c\\d; DROP TABLE runs; -- 槽 😀\n");
    EXPECT_EQ(station::storableText(QString("a") + QChar(0) + "b"), "a\\u0000b");
    const QChar high(0xd83d);
    const QChar low(0xde00);
    EXPECT_EQ(station::storableText(QString(high) + "x" + low + low + high), "\\ud83dx\\ude00\\ude00\\ud83d");
    EXPECT_EQ(station::storableText(QString(high) + high + low), QString("\\ud83d") + high + low);
}

TEST(ResultRowsTest, JsonIsAsciiWhereTextIsNoUnicode)
{
    EXPECT_EQ(station::jsonText(QString("a") + QChar(0) + QChar(0xd83d)), "\"a\\u0000\\ud83d\"");
    EXPECT_EQ(station::jsonText({}), "null");
    EXPECT_EQ(station::jsonText(Dictionary{{"b", true}, {"a", 1}}), "{\"a\":1,\"b\":true}");
}

} // namespace
