#include "tests/end_to_end/StationRun.h"
#include "tests/support/Wait.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>

using testsupport::StationRun;

namespace {

/// A sequence is trusted to test, not to harm.
class Trust : public ::testing::Test
{
protected:
    /// Lua that writes a file, which tells that the script is where it is to be.
    QString sign(const QString &name = QStringLiteral("sign")) const
    {
        return QStringLiteral("io.open('%1', 'w'):close() ").arg(station.path(name));
    }
    void waitForSign(const QString &name = QStringLiteral("sign"))
    {
        ASSERT_TRUE(testsupport::waitUntil([&] { return QFile::exists(station.path(name)); }))
            << station.everything().toStdString();
    }
    void terminate()
    {
        EXPECT_EQ(::kill(static_cast<pid_t>(station.process().processId()), SIGTERM), 0);
        station.finish();
    }

    StationRun station;
};

constexpr const char *Search = "string.find(string.rep('a', 40), string.rep('a*', 40) .. 'b') ";
constexpr const char *Ask = "return showView(systemIndex, { button = { 'No', 'Yes' } }) ";

TEST_F(Trust, WhatReachesOutOfASequenceIsRefusedUnlessTheConfigurationAllowsIt)
{
    station.perSystem("os.execute('true')").run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_TRUE(station.output().contains("os.execute is not available to a sequence; the configuration "
                                          "allows it with lua.allow = [\"os.execute\"]"))
        << station.output().toStdString();
}

TEST_F(Trust, WhatIsAllowedIsAllowedToSequencesAndTheOperator)
{
    station.perSystem("return os.execute('true')")
        .operatorDoes("assert(debug.getinfo(1) and os.execute('true'))");
    station.table("[lua]\nallow = ['os.execute', 'debug']").passes();
}

TEST_F(Trust, AnExitThatIsAllowedEndsTheStation)
{
    station.slotNames({"S1", "S2"}).table("[lua]\nallow = ['os.exit']");
    station.perSystem("if systemIndex == 0 then sleep(3600) end os.exit(7)").run();
    EXPECT_EQ(station.status(), 7);
    EXPECT_EQ(station.errors(), "");
}

TEST_F(Trust, ASequenceWithoutMemoryEndsAloneWhileAnotherWaitsForItsAnswer)
{
    station.slotNames({"S1", "S2"}).table("[lua]\nmemory = 8");
    station.perSystem(
        QStringLiteral("if systemIndex == 0 then local t = {} while true do t = { t } end end ") + Ask);
    station.operatorDoes(
        "operator.waitForPanel('1', 30) eventually(function() return logged('not enough memory') "
        "end, 'the end of system 0') operator.click({ panel = '1', title = 'Yes' })");
    station.run();
    EXPECT_EQ(station.outcome(0), "erred") << station.everything().toStdString();
    EXPECT_EQ(station.outcome(1), "passed");
    EXPECT_TRUE(station.log().contains("system 0: sequence1.lua:1: not enough memory"));
}

TEST_F(Trust, AValidationWithoutMemoryEndsItsCallWithAnErrorThatCanBeCaught)
{
    station.table("[lua]\nmemory = 8");
    station.perSystem(
        "local ok, why = pcall(showView, systemIndex, { input = { 'SN' }, validate = function() "
        "return #string.rep('x', 1 << 30) > 0 end }) log('second') "
        "local yes = showView(systemIndex, { button = { 'No', 'Yes' } }) "
        "return yes and not ok and why:find('not enough memory') ~= nil");
    station.operatorDoes("operator.waitForPanel('0', 30) operator.scan('A') eventually(function() return "
                         "logged('second') end, 'the second call') operator.waitForPanel('0', 30) "
                         "operator.click({ panel = '0', title = 'Yes' })");
    station.passes();
}

TEST_F(Trust, AnErrorObjectThatIsHugeEndsItsSequenceAlone)
{
    station.slotNames({"S1", "S2"});
    station.perSystem("if systemIndex == 0 then error(string.rep('<b>%s', 10000000), 0) end return true")
        .run();
    EXPECT_EQ(station.outcome(0), "erred");
    EXPECT_EQ(station.outcome(1), "passed");
    EXPECT_LT(station.log().size(), 50'000);
}

TEST_F(Trust, AStopEndsLoopsThatCatchItsError)
{
    station.slotNames({"S1", "S2", "S3"});
    station.perSystem(sign() + "local work = function() while true do end end "
                               "if systemIndex == 0 then while true do pcall(work) end end "
                               "if systemIndex == 1 then while true do xpcall(work, work) end end "
                               "while true do pcall(coroutine.wrap(work)) end");
    station.start();
    waitForSign();
    terminate();
    EXPECT_EQ(station.errors(), "");
    for (int system = 0; system < 3; ++system)
        EXPECT_EQ(station.outcome(system), "stopped");
}

TEST_F(Trust, ASearchWithoutEndIsNamedAndLeftBehindByTheEndOfTheStation)
{
    station.slotNames({"S1", "S2"});
    station.perSystem("if systemIndex == 0 then " + sign() + Search + "end " + Ask);
    station.operatorDoes("operator.waitForPanel('1', 30) " + sign("waits") + "operator.sleep(3600)");
    station.start();
    waitForSign();
    waitForSign("waits");
    terminate();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errorLine(), "station: does not end when stopped: system 0");
    EXPECT_EQ(station.outcome(1), "stopped");
}

TEST_F(Trust, ASearchThatEndsAfterTheStopStopsItsSequence)
{
    station.perSystem(sign() +
                      "string.find(string.rep('a', 24), string.rep('a*', 6) .. 'b') while true do end");
    station.start();
    waitForSign();
    terminate();
    EXPECT_EQ(station.errors(), "");
    EXPECT_EQ(station.outcome(0), "stopped");
}

QFile::Permissions rightsOfOthers(const QString &path)
{
    return QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                            QFile::ReadOther | QFile::WriteOther | QFile::ExeOther);
}

/// Everything that a run writes.
const QStringList Written{"results.jsonl", "station.log", "r.sqlite",     "record.lua",
                          "shots/a.png",   "shots",       "of-a-sequence"};

StationRun &writesAll(StationRun &station, const QString &files)
{
    station.config(QStringLiteral("[station]\ngroups = ['G1']\nslots = ['S1']\n%1[results]\ndatabase = "
                                  "'r.sqlite'\n[[sequence]]\nscript = 's.lua'\n")
                       .arg(files));
    static_cast<void>(station.file("s.lua", QStringLiteral("io.open('%1', 'w'):close() return showView("
                                                           "systemIndex, { button = { 'OK' } })")
                                                .arg(station.path("of-a-sequence"))));
    return station
        .operatorDoes(QStringLiteral("operator.waitForPanel('0', 30) operator.screenshot('%1') "
                                     "operator.click({ panel = '0', title = 'OK' })")
                          .arg(station.path("shots/a.png")))
        .argument("--record")
        .argument(station.path("record.lua"));
}

TEST_F(Trust, WhatTheStationWritesBelongsToItsUserAlone)
{
    writesAll(station, {}).passes();
    for (const QString &name : Written) {
        EXPECT_TRUE(QFile::exists(station.path(name))) << name.toStdString();
        EXPECT_EQ(rightsOfOthers(station.path(name)), QFile::Permissions()) << name.toStdString();
    }
}

TEST_F(Trust, ADatabasesJournalBelongsToTheUserAloneToo)
{
    station.config("[station]\ngroups = ['G1']\nslots = ['S1']\n[results]\ndatabase = 'r.sqlite'\n"
                   "[[sequence]]\nscript = 's.lua'\n");
    static_cast<void>(station.file("s.lua", Ask));
    station.operatorDoes("operator.waitForPanel('0', 30) " + sign() + "operator.sleep(3600)");
    station.start();
    waitForSign();
    const QStringList beside =
        QFileInfo(station.path("r.sqlite")).dir().entryList({"r.sqlite*"}, QDir::Files, QDir::Name);
    EXPECT_EQ(beside, (QStringList{"r.sqlite", "r.sqlite-shm", "r.sqlite-wal"}));
    for (const QString &name : beside)
        EXPECT_EQ(rightsOfOthers(station.path(name)), QFile::Permissions()) << name.toStdString();
    terminate();
}

TEST_F(Trust, FilesAreSharedAsTheUsersOwnSettingSaysWhereTheConfigurationSaysSo)
{
    const mode_t before = ::umask(0027);
    writesAll(station, "files = 'shared'\n").passes();
    ::umask(before);
    for (const QString &name : Written) {
        const bool isFolder = name == "shots";
        EXPECT_EQ(rightsOfOthers(station.path(name)),
                  isFolder ? QFile::ReadGroup | QFile::ExeGroup : QFile::Permissions(QFile::ReadGroup))
            << name.toStdString();
    }
}

TEST_F(Trust, AFileThatIsThereKeepsItsRights)
{
    for (const char *name : {"results.jsonl", "station.log"}) {
        static_cast<void>(station.file(name, {}));
        EXPECT_TRUE(QFile::setPermissions(station.path(name), QFile::ReadOwner | QFile::WriteOwner |
                                                                  QFile::ReadGroup | QFile::ReadOther));
    }
    writesAll(station, {}).passes();
    for (const char *name : {"results.jsonl", "station.log"})
        EXPECT_EQ(rightsOfOthers(station.path(name)), QFile::ReadGroup | QFile::ReadOther) << name;
}

} // namespace
