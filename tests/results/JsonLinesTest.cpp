#include "tests/results/JsonLinesFixture.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>
#include <thread>
#include <vector>

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;
using station::ResultOwner;
using station::Results;

namespace {

class JsonLinesTest : public testsupport::JsonLinesFixture
{
protected:
    /// The line without its time, as text.
    QByteArray onlyLine() const
    {
        const QList<QJsonObject> objects = written();
        EXPECT_EQ(objects.size(), 1);
        QJsonObject object = objects.value(0);
        object.remove("time");
        return QJsonDocument(object).toJson(QJsonDocument::Compact);
    }
    QByteArray lineOfResult(const Value &result) const
    {
        Results results({path(), {}}, false);
        results.writeCall(ofSystem, answered(result));
        return QJsonDocument(QJsonObject{{"result", written().constLast().value("result")}})
            .toJson(QJsonDocument::Compact);
    }
};

TEST_F(JsonLinesTest, ACallIsAnObjectInALine)
{
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, {"showView", {3, "x"}, Dictionary{{"SN", "A1"}}, std::nullopt});
    EXPECT_EQ(onlyLine(),
              R"({"call":"showView","error":null,"result":{"SN":"A1"},"sequence":"ask.lua","system":3})");
}

TEST_F(JsonLinesTest, ACallOfAGroupsSequenceNamesTheGroup)
{
    Results results({path(), {}}, false);
    results.writeCall(ofGroup, answered(true));
    EXPECT_EQ(onlyLine(),
              R"({"call":"showView","error":null,"group":"G1","result":true,"sequence":"ask.lua"})");
}

TEST_F(JsonLinesTest, ACallOfTheStationsSequenceNamesNeither)
{
    Results results({path(), {}}, false);
    results.writeCall(ofStation, answered({}));
    EXPECT_EQ(onlyLine(), R"({"call":"showView","error":null,"result":null,"sequence":"ask.lua"})");
}

TEST_F(JsonLinesTest, AnErrorIsWrittenWithDomainCodeAndMessage)
{
    Results results({path(), {}}, false);
    results.writeCall(ofStation, {"getData", {}, {}, Error{"SomeDomain", 201, "not \"found\""}});
    EXPECT_EQ(
        onlyLine(),
        R"({"call":"getData","error":{"code":201,"domain":"SomeDomain","message":"not \"found\""},"result":null,"sequence":"ask.lua"})");
}

TEST_F(JsonLinesTest, AnEndIsWrittenWithOutcomeValueAndMessage)
{
    const std::pair<KVKLuaOutcome, QByteArray> cases[] = {{KVKLuaOutcome::Passed, "passed"},
                                                          {KVKLuaOutcome::Failed, "failed"},
                                                          {KVKLuaOutcome::Erred, "erred"},
                                                          {KVKLuaOutcome::Stopped, "stopped"}};
    for (const auto &[outcome, word] : cases) {
        QFile::remove(path());
        Results results({path(), {}}, false);
        results.writeEnd(ofSystem, {outcome, 7, "ask.lua:1: why"});
        EXPECT_EQ(onlyLine(), R"({"message":"ask.lua:1: why","outcome":")" + word +
                                  R"(","sequence":"ask.lua","system":3,"value":7})");
    }
}

TEST_F(JsonLinesTest, AnEndWithoutValueAndMessageHasThemEmpty)
{
    Results results({path(), {}}, false);
    results.writeEnd(ofGroup, {});
    EXPECT_EQ(onlyLine(),
              R"({"group":"G1","message":"","outcome":"passed","sequence":"ask.lua","value":null})");
}

TEST_F(JsonLinesTest, TheTimeIsThatOfTheWritingInUniversalTime)
{
    const auto toTheMillisecond = [] {
        return QDateTime::fromMSecsSinceEpoch(QDateTime::currentMSecsSinceEpoch(), Qt::UTC);
    };
    const QDateTime before = toTheMillisecond();
    Results results({path(), {}}, false);
    results.writeEnd(ofSystem, {});
    const QString text = written().value(0).value("time").toString();
    EXPECT_TRUE(text.endsWith('Z')) << text.toStdString();
    const QDateTime time = QDateTime::fromString(text, Qt::ISODateWithMs);
    EXPECT_GE(time, before);
    EXPECT_LE(time, toTheMillisecond());
}

TEST_F(JsonLinesTest, ValuesKeepTheirKinds)
{
    EXPECT_EQ(lineOfResult(true), R"({"result":true})");
    EXPECT_EQ(lineOfResult(false), R"({"result":false})");
    EXPECT_EQ(lineOfResult(QString("1")), R"({"result":"1"})");
    EXPECT_EQ(lineOfResult(qlonglong{5}), R"({"result":5})");
    EXPECT_EQ(lineOfResult(0.5), R"({"result":0.5})");
    EXPECT_EQ(lineOfResult(Array{1, "a", true, Value()}), R"({"result":[1,"a",true,null]})");
    EXPECT_EQ(lineOfResult(Dictionary()), R"({"result":{}})");
    EXPECT_EQ(lineOfResult(Array()), R"({"result":[]})");
    EXPECT_EQ(lineOfResult(Dictionary{{"a", Dictionary{{"b", Array{1}}}}}), R"({"result":{"a":{"b":[1]}}})");
}

TEST_F(JsonLinesTest, LargeWholeNumbersAreExact)
{
    EXPECT_EQ(lineOfResult(qlonglong{9007199254740993}), R"({"result":9007199254740993})");
    EXPECT_EQ(lineOfResult(std::numeric_limits<qlonglong>::min()), R"({"result":-9223372036854775808})");
}

TEST_F(JsonLinesTest, WhateverAnOperatorTypesStaysInOneLine)
{
    const QString nasty = QString::fromUtf8("a\"b\\c\nd\re\tf</g>\u2028 ü 槽 😀") + QChar(0) + QChar(0x1b);
    Results results({path(), {}}, false);
    results.writeCall({nasty, {}, nasty}, {nasty, {}, Dictionary{{nasty, nasty}}, std::nullopt});
    const QList<QJsonObject> objects = written();
    ASSERT_EQ(objects.size(), 1);
    EXPECT_EQ(objects.at(0).value("sequence").toString(), nasty);
    EXPECT_EQ(objects.at(0).value("group").toString(), nasty);
    EXPECT_EQ(objects.at(0).value("call").toString(), nasty);
    EXPECT_EQ(objects.at(0).value("result").toObject().value(nasty).toString(), nasty);
}

TEST_F(JsonLinesTest, TextThatIsNoUnicodeIsEscapedAndComesBackWhole)
{
    const QString halves = QString("a") + QChar(0xd83d) + "b" + QChar(0xde00) + QChar(0xde00) + QChar(0xd83d);
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, answered(Dictionary{{halves, halves}}));
    EXPECT_EQ(written().value(0).value("result").toObject().value(halves).toString(), halves);
    EXPECT_TRUE(m_files.read("results.jsonl").contains(R"("a\ud83db\ude00\ude00\ud83d")"));
}

TEST_F(JsonLinesTest, ALongTextIsWrittenWhole)
{
    QString text(3'000'000, QChar(0x69fd));
    text[0] = 'a';
    text[text.size() - 1] = QChar(0);
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, answered(text));
    ASSERT_EQ(written().size(), 1);
    EXPECT_TRUE(written().at(0).value("result").toString() == text);
}

TEST_F(JsonLinesTest, EachLineIsThereAtOnce)
{
    Results results({path(), {}}, false);
    EXPECT_EQ(written().size(), 0);
    results.writeCall(ofSystem, answered(1));
    EXPECT_EQ(written().size(), 1);
    results.writeEnd(ofSystem, {});
    EXPECT_EQ(written().size(), 2);
}

TEST_F(JsonLinesTest, WhatIsThereStaysAndIsWrittenBehind)
{
    m_files.write("results.jsonl", "{\"earlier\":1}\n");
    Results results({path(), {}}, false);
    results.writeEnd(ofSystem, {});
    ASSERT_EQ(written().size(), 2);
    EXPECT_EQ(written().at(0), (QJsonObject{{"earlier", 1}}));
    EXPECT_EQ(written().at(1).value("system"), QJsonValue(3));
}

TEST_F(JsonLinesTest, ALineThatACrashHasTornIsEndedBeforeTheNextOne)
{
    m_files.write("results.jsonl", "{\"earlier\":1}\n{\"torn\":");
    Results results({path(), {}}, false);
    EXPECT_EQ(m_files.read("results.jsonl"), "{\"earlier\":1}\n{\"torn\":");
    results.writeEnd(ofSystem, {});
    results.writeEnd(ofSystem, {});
    const QStringList lines = m_files.lines("results.jsonl");
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines.at(1), "{\"torn\":");
    EXPECT_EQ(written().at(2).value("system"), QJsonValue(3));
    EXPECT_EQ(written().at(3).value("system"), QJsonValue(3));
}

TEST_F(JsonLinesTest, ARunBeginsWithALineOfItsOwnThatItsOtherLinesReferTo)
{
    Results results({path(), {}}, false);
    results.beginRun("Line 3", m_files.path("sub/../station.toml"));
    results.writeEnd(ofSystem, {});
    results.beginRun("Line 3", m_files.path("station.toml"));
    results.writeCall(ofSystem, answered(1));
    const QList<QJsonObject> lines = written();
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines.at(0).keys(), (QStringList{"configuration", "run", "start", "station"}));
    EXPECT_EQ(lines.at(0).value("station").toString(), "Line 3");
    EXPECT_EQ(lines.at(0).value("configuration").toString(), m_files.path("station.toml"));
    const QDateTime start = QDateTime::fromString(lines.at(0).value("start").toString(), Qt::ISODateWithMs);
    EXPECT_EQ(start.timeSpec(), Qt::UTC);
    EXPECT_FALSE(lines.at(0).value("run").toString().isEmpty());
    EXPECT_EQ(lines.at(1).value("run"), lines.at(0).value("run"));
    EXPECT_NE(lines.at(2).value("run"), lines.at(0).value("run"));
    EXPECT_EQ(lines.at(3).value("run"), lines.at(2).value("run"));
}

TEST_F(JsonLinesTest, ARunsLineAndEachAnswerSayWhoGaveIt)
{
    Results results({path(), {}}, false);
    results.beginRun("Line 3", m_files.path("station.toml"), "4711");
    results.writeCall(ofSystem, answered(1));
    results.writeEnd(ofSystem, {});
    results.beginRun("Line 3", m_files.path("station.toml"), {});
    results.writeCall(ofSystem, answered(1));
    const QList<QJsonObject> lines = written();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.at(0).value("operator"), QJsonValue("4711"));
    EXPECT_EQ(lines.at(1).value("operator"), QJsonValue("4711"));
    EXPECT_FALSE(lines.at(2).contains("operator")) << "an end is nobody's answer";
    EXPECT_FALSE(lines.at(3).contains("operator"));
    EXPECT_FALSE(lines.at(4).contains("operator"));
}

TEST_F(JsonLinesTest, ASecondWriterIsRefusedAsLongAsThereIsAFirst)
{
    std::optional<Results> first;
    first.emplace(station::ResultsTargets{path(), {}}, false);
    EXPECT_EQ(testsupport::refusalOf([this] {
                  const Results second({path(), {}}, false);
              }),
              "--results: " + path() + ": another station writes to it");
    first->writeEnd(ofSystem, {});
    EXPECT_FALSE(first->hasFailed());
    first.reset();
    const Results third({path(), {}}, false);
    EXPECT_EQ(written().size(), 1);
}

TEST_F(JsonLinesTest, ADeviceMayHaveSeveralWriters)
{
    Results first({"/dev/null", {}}, false);
    Results second({"/dev/null", {}}, false);
    first.writeEnd(ofSystem, {});
    second.writeEnd(ofSystem, {});
    EXPECT_FALSE(first.hasFailed());
    EXPECT_FALSE(second.hasFailed());
}

TEST_F(JsonLinesTest, LinesOfManySequencesDoNotMix)
{
    Results results({path(), {}}, false);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&results, thread] {
            for (int i = 0; i < 50; ++i)
                results.writeCall({"s", thread, {}}, answered(QString(200, QChar('a' + thread))));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QMap<int, int> counts;
    for (const QJsonObject &object : written()) {
        const int thread = object.value("system").toInt(-1);
        EXPECT_EQ(object.value("result").toString(), QString(200, QChar('a' + thread)));
        ++counts[thread];
    }
    EXPECT_EQ(counts.size(), 8);
    for (const int count : counts)
        EXPECT_EQ(count, 50);
}

TEST_F(JsonLinesTest, AFileThatCannotBeWrittenIsRefusedWithItsPath)
{
    EXPECT_EQ(testsupport::refusalOf([] {
                  const Results results({"/nowhere/r.jsonl", {}}, false);
              }),
              "--results: /nowhere/r.jsonl: No such file or directory");
    EXPECT_TRUE(testsupport::refusalOf([this] {
                    const Results results({m_files.folder(), {}}, false);
                }).startsWith("--results: " + m_files.folder() + ": "));
}

TEST_F(JsonLinesTest, WithoutAPathNothingIsWrittenAndNothingFails)
{
    Results results({QString(), {}}, false);
    testing::internal::CaptureStdout();
    results.writeCall(ofSystem, answered(1));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_FALSE(results.hasFailed());
}

TEST_F(JsonLinesTest, AnswersArePrintedForPeopleWhereThatIsWanted)
{
    Results results({QString(), {}}, true);
    testing::internal::CaptureStdout();
    results.writeCall(ofSystem, answered(Dictionary{{"SN", "A1"}}));
    results.writeCall(ofGroup, answered(true));
    results.writeCall(ofStation, answered({}));
    results.writeCall(ofStation, {"getData", {}, {}, Error{"SomeDomain", 201, "not found"}});
    results.writeEnd(ofSystem, {KVKLuaOutcome::Passed, 7, {}});
    results.writeEnd(ofGroup, {KVKLuaOutcome::Erred, {}, "ask.lua:1: why"});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "system 3: showView -> {SN = A1}\n"
                                                      "group G1: showView -> 1\n"
                                                      "station: showView -> (null)\n"
                                                      "station: getData -> error: not found\n"
                                                      "system 3: passed\n"
                                                      "group G1: erred, ask.lua:1: why\n");
}

TEST_F(JsonLinesTest, SystemZeroIsASystemLikeAnyOther)
{
    Results results({path(), {}}, false);
    results.writeEnd({"ask.lua", 0, {}}, {});
    EXPECT_EQ(written().value(0).value("system"), QJsonValue(0));
    EXPECT_EQ((ResultOwner{"ask.lua", 0, {}}.name()), "system 0");
}

} // namespace
