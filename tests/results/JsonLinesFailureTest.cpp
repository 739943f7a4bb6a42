#include "tests/results/FileSizeLimit.h"
#include "tests/results/JsonLinesFixture.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/LogTrap.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

using platform::Value;
using station::ResultOwner;
using station::Results;

namespace {

using JsonLinesFailureTest = testsupport::JsonLinesFixture;

TEST_F(JsonLinesFailureTest, AFileThatHasBeenRemovedIsMadeAnewWithAllThatItHeld)
{
    m_files.write("results.jsonl", "{\"earlier\":1}\n");
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, answered(1));
    ASSERT_TRUE(QFile::remove(path()));
    results.writeCall(ofSystem, answered(2));
    EXPECT_FALSE(results.hasFailed());
    ASSERT_EQ(written().size(), 3);
    EXPECT_EQ(written().at(0), (QJsonObject{{"earlier", 1}}));
    EXPECT_EQ(written().at(1).value("result"), QJsonValue(1));
    EXPECT_EQ(written().at(2).value("result"), QJsonValue(2));
}

TEST_F(JsonLinesFailureTest, AFileThatWasRemovedBehindTheLastLineIsMadeAnewAtTheNextLook)
{
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, answered(1));
    ASSERT_TRUE(QFile::remove(path()));
    results.tryAgain();
    ASSERT_EQ(written().size(), 1);
    EXPECT_EQ(written().at(0).value("result"), QJsonValue(1));
}

TEST_F(JsonLinesFailureTest, AFileThatHasBeenMovedKeepsWhatItHeldAndTheNextOneGetsTheRest)
{
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, answered(1));
    ASSERT_TRUE(QFile::rename(path(), m_files.path("moved.jsonl")));
    results.writeCall(ofSystem, answered(2));
    EXPECT_FALSE(results.hasFailed());
    EXPECT_EQ(m_files.lines("moved.jsonl").size(), 1);
    ASSERT_EQ(written().size(), 1);
    EXPECT_EQ(written().at(0).value("result"), QJsonValue(2));
}

TEST_F(JsonLinesFailureTest, AFileThatHasBeenReplacedGetsWhatItLacksAndNothingTwice)
{
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, answered(1));
    const QByteArray first = m_files.read("results.jsonl");
    results.writeCall(ofSystem, answered(2));
    m_files.write("other.jsonl", "another's\n" + first + "torn");
    ASSERT_EQ(std::rename(m_files.path("other.jsonl").toLocal8Bit(), path().toLocal8Bit()), 0);
    results.writeCall(ofSystem, answered(3));
    EXPECT_FALSE(results.hasFailed());
    const QStringList lines = m_files.lines("results.jsonl");
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.at(0), "another's");
    EXPECT_EQ(lines.at(2), "torn");
    EXPECT_EQ(written().at(1).value("result"), QJsonValue(1));
    EXPECT_EQ(written().at(3).value("result"), QJsonValue(2));
    EXPECT_EQ(written().at(4).value("result"), QJsonValue(3));
}

TEST_F(JsonLinesFailureTest, AFolderInTheFilesPlaceHoldsUpItsLinesUntilItGoes)
{
    testsupport::expectErrors();
    testing::internal::CaptureStderr();
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, answered(1));
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_TRUE(QDir().mkdir(path()));
    results.writeCall(ofSystem, answered(2));
    results.writeCall(ofSystem, answered(3));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "station: results cannot be written: " + path().toStdString() + ": Is a directory\n");
    ASSERT_TRUE(QDir().rmdir(path()));
    results.tryAgain();
    EXPECT_FALSE(results.hasFailed());
    ASSERT_EQ(written().size(), 3);
    for (int line = 0; line < 3; ++line)
        EXPECT_EQ(written().at(line).value("result"), QJsonValue(line + 1));
}

TEST_F(JsonLinesFailureTest, AFolderThatHasGoneHoldsUpItsLinesUntilItIsBack)
{
    testsupport::expectErrors();
    ASSERT_TRUE(QDir(m_files.folder()).mkdir("share"));
    const QString shared = m_files.path("share/results.jsonl");
    Results results({shared, {}}, false);
    results.writeCall(ofSystem, answered(1));
    ASSERT_TRUE(QFile::rename(m_files.path("share"), m_files.path("away")));
    QString told;
    results.onWaiting([&told](const QString &text, const QString &trouble) { told = text + '|' + trouble; });
    testing::internal::CaptureStderr();
    results.writeCall(ofSystem, answered(2));
    EXPECT_EQ(told, "1 result is not written yet|" + shared + ": No such file or directory");
    results.writeCall(ofSystem, answered(3));
    EXPECT_EQ(told, "2 results are not written yet|" + shared + ": No such file or directory");
    ASSERT_TRUE(QFile::rename(m_files.path("away"), m_files.path("share")));
    results.tryAgain();
    EXPECT_EQ(told, "|");
    EXPECT_FALSE(results.hasFailed());
    EXPECT_EQ(m_files.lines("share/results.jsonl").size(), 3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "station: results cannot be written: " + shared.toStdString() +
                  ": No such file or directory\n");
}

TEST_F(JsonLinesFailureTest, AFileThatIsTruncatedIsToldAsLostAndWrittenOn)
{
    testsupport::expectErrors();
    testing::internal::CaptureStderr();
    Results results({path(), {}}, false);
    results.writeCall(ofSystem, answered(1));
    ASSERT_TRUE(QFile::resize(path(), 7));
    results.tryAgain();
    results.writeCall(ofSystem, answered(2));
    EXPECT_TRUE(results.hasFailed());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "station: results are lost: " + path().toStdString() + ": the file has been truncated\n");
    ASSERT_EQ(written().size(), 2);
    EXPECT_EQ(written().at(1).value("result"), QJsonValue(2));
}

TEST_F(JsonLinesFailureTest, AFullDiskIsToldOnceWhenItHoldsUpLinesAndOnceWhenItHasLostThem)
{
    testsupport::expectErrors();
    testing::internal::CaptureStderr();
    Results results({"/dev/full", {}}, false);
    results.writeCall(ofSystem, answered(1));
    results.writeEnd(ofSystem, {});
    const std::string waits = "station: results cannot be written: /dev/full: No space left on device\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), waits);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(results.hasFailed());
    EXPECT_TRUE(results.hasFailed());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "station: results are lost: /dev/full: No space left on device\n");
}

TEST_F(JsonLinesFailureTest, AFullDiskIsNamedForALongLineToo)
{
    testsupport::expectErrors();
    testing::internal::CaptureStderr();
    Results results({"/dev/full", {}}, false);
    results.writeCall(ofSystem, answered(QString(200'000, 'a')));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "station: results cannot be written: /dev/full: No space left on device\n");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(results.hasFailed());
    testing::internal::GetCapturedStderr();
}

TEST_F(JsonLinesFailureTest, ALineThatHasNoRoomIsKeptInTheLogAndWrittenWholeAndOnceLater)
{
    testsupport::expectErrors();
    testsupport::LogRecorder log;
    Results results({path(), {}}, false);
    testing::internal::CaptureStderr();
    {
        const testsupport::FileSizeLimit limit(1000);
        results.writeCall(ofSystem, answered(QString(2000, 'a')));
        EXPECT_EQ(m_files.read("results.jsonl"), "") << "no half line is left";
        results.writeEnd(ofGroup, {});
        results.tryAgain();
    }
    EXPECT_TRUE(log.anyContains("not yet in " + path() + ": {\"call\":\"showView\""));
    EXPECT_TRUE(log.anyContains("not yet in " + path() + ": {\"group\":\"G1\""));
    EXPECT_FALSE(results.hasFailed());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "station: results cannot be written: " + path().toStdString() + ": File too large\n");
    ASSERT_EQ(written().size(), 2);
    EXPECT_EQ(written().at(0).value("result").toString(), QString(2000, 'a'));
    EXPECT_EQ(written().at(1).value("group").toString(), "G1");
}

} // namespace
