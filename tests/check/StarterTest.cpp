#include "tests/check/CheckFixture.h"
#include "tests/end_to_end/StationRun.h"

#include <QProcess>

namespace {

using Starter = testsupport::CheckTest;

const QStringList Written{"README.md", "operator.lua", "sequence.lua", "station.toml"};

std::pair<int, QString> stationNew(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(STATION_PATH), QStringList{"new"} + arguments);
    EXPECT_TRUE(process.waitForFinished(100'000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
}

TEST_F(Starter, WritesAStationThatIsCleanAndRuns)
{
    const QString folder = files.path("a/new/station");
    EXPECT_EQ(stationNew({folder}).first, 0);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files, QDir::Name), Written);
    QProcess check;
    check.start(QStringLiteral(STATION_PATH), {"check", folder + "/station.toml", "--operator",
                                               folder + "/operator.lua", "--plugin", PLUGIN_PATH});
    EXPECT_TRUE(check.waitForFinished(100'000));
    EXPECT_EQ(check.exitCode(), 0);
    EXPECT_EQ(check.readAllStandardOutput() + check.readAllStandardError(), "");
    QProcess run;
    run.start(QStringLiteral(STATION_PATH),
              {"--config", folder + "/station.toml", "--operator", folder + "/operator.lua", "--headless",
               "--plugin", PLUGIN_PATH});
    EXPECT_TRUE(run.waitForFinished(100'000));
    EXPECT_EQ(run.exitCode(), 0) << run.readAllStandardError().toStdString();
}

TEST_F(Starter, RefusesAFolderThatHoldsOneOfItsFiles)
{
    for (const QString &name : Written) {
        const QString folder = files.path("with-" + name);
        static_cast<void>(files.write("with-" + name + '/' + name, "mine"));
        const auto [status, errors] = stationNew({folder});
        EXPECT_EQ(status, 2);
        EXPECT_EQ(errors, QStringLiteral("station: new: %1/%2: is there already, and nothing was written\n")
                              .arg(folder, name));
        EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{name});
        EXPECT_EQ(files.read("with-" + name + '/' + name), "mine");
    }
}

TEST_F(Starter, LeavesAloneWhatElseIsThere)
{
    static_cast<void>(files.write("mine/notes.txt", "mine"));
    EXPECT_EQ(stationNew({files.path("mine")}).first, 0);
    EXPECT_EQ(files.read("mine/notes.txt"), "mine");
}

TEST_F(Starter, TellsWhereItCannotWrite)
{
    const QString file = files.write("file", "mine");
    EXPECT_EQ(stationNew({file}).first, 2);
    EXPECT_EQ(stationNew({file + "/below"}).first, 2);
    EXPECT_EQ(stationNew({}).first, 2);
    EXPECT_EQ(stationNew({"a", "b"}).first, 2);
    EXPECT_EQ(files.read("file"), "mine");
    // A link that leads nowhere would be written through.
    ASSERT_TRUE(QDir(files.folder()).mkpath("linked"));
    ASSERT_TRUE(QFile::link(files.path("elsewhere.toml"), files.path("linked/station.toml")));
    EXPECT_EQ(stationNew({files.path("linked")}).first, 2);
    EXPECT_FALSE(QFileInfo::exists(files.path("elsewhere.toml")));
}

} // namespace
