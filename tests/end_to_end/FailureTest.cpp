#include "tests/end_to_end/StationRun.h"

#include <QFile>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

/// A configuration that is refused, and what the line says beside the file.
struct WrongConfig
{
    const char *name;
    const char *toml;
    const char *says;
};

void PrintTo(const WrongConfig &wrong, std::ostream *stream)
{
    *stream << wrong.name;
}

class RefusedConfiguration : public ::testing::TestWithParam<WrongConfig>
{};

TEST_P(RefusedConfiguration, IsToldInOneLineWithFileLineAndKey)
{
    StationRun station;
    station.config(GetParam().toml).run();
    EXPECT_EQ(station.status(), 2);
    const QString line = station.errorLine();
    EXPECT_TRUE(line.contains(station.path("station.toml") + ":" + GetParam().says)) << line.toStdString();
    EXPECT_FALSE(QFile::exists(station.path("results.jsonl"))) << "nothing has run";
}

INSTANTIATE_TEST_SUITE_P(
    Ways, RefusedConfiguration,
    ::testing::Values(
        WrongConfig{"UnknownKey", "[station]\nname = \"A\"\ngroups = [\"G\"]\nslots = [\"S\"]\ncolour = 1\n",
                    "5: key 'station.colour'"},
        WrongConfig{"UnknownTable",
                    "[station]\ngroups = [\"G\"]\nslots = [\"S\"]\n[stations]\nname = \"A\"\n",
                    "4: key 'stations'"},
        WrongConfig{"NoToml", "[station]\nname = \"A\ngroups = [\"G\"]\n", "2: "},
        WrongConfig{"WrongType", "[station]\nname = \"A\"\ngroups = \"G\"\nslots = [\"S\"]\n",
                    "3: key 'station.groups'"},
        WrongConfig{"NoSlots", "[station]\ngroups = [\"G\"]\n", "1: key 'station.slots'"},
        WrongConfig{"GroupTwice", "[station]\ngroups = [\"G\", \"G\"]\nslots = [\"S\"]\n",
                    "2: key 'station.groups'"},
        WrongConfig{"MappingsOfDifferentLength",
                    "[station]\nsystem_groups = [\"G\", \"G\"]\nsystem_slots = [\"S\"]\n",
                    "3: key 'station.system_slots'"},
        WrongConfig{"NoSuchSystem",
                    "[station]\ngroups = [\"G\"]\nslots = [\"S\"]\n[[system]]\nindex = 1\ntext = \"red\"\n",
                    "5: key 'system.index'"},
        WrongConfig{
            "NoSuchColour",
            "[station]\ngroups = [\"G\"]\nslots = [\"S\"]\n[[system]]\nindex = 0\ntext = \"reddish\"\n",
            "6: key 'system.text'"},
        WrongConfig{"NoSuchScript",
                    "[station]\ngroups = [\"G\"]\nslots = [\"S\"]\n[[sequence]]\nscript = \"none.lua\"\n",
                    "5: key 'sequence.script'"},
        WrongConfig{"WrongKindOfSequence",
                    "[station]\ngroups = [\"G\"]\nslots = [\"S\"]\n[[sequence]]\nscript = \"station.toml\"\n"
                    "per = \"slot\"\n",
                    "6: key 'sequence.per'"}),
    [](const auto &testCase) { return std::string(testCase.param.name); });

/// A plug-in that is refused, and what the line says beside its path.
struct WrongPlugin
{
    const char *name;
    const char *says;
};

void PrintTo(const WrongPlugin &wrong, std::ostream *stream)
{
    *stream << wrong.name;
}

class RefusedPlugin : public ::testing::TestWithParam<WrongPlugin>
{};

TEST_P(RefusedPlugin, IsToldInOneLineWithItsPath)
{
    const QString path = QStringLiteral(FIXTURE_PLUGINS_PATH "/lib%1.so").arg(GetParam().name);
    ASSERT_TRUE(QFile::exists(path)) << path.toStdString();
    StationRun station;
    station.perSystem("return true").plugin(path).run();
    EXPECT_EQ(station.status(), 2);
    const QString line = station.errorLine();
    EXPECT_TRUE(line.contains(path)) << line.toStdString();
    EXPECT_TRUE(line.contains(GetParam().says)) << line.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Ways, RefusedPlugin,
                         ::testing::Values(WrongPlugin{"WrongVersion", "InteractiveView/9.0"},
                                           WrongPlugin{"NewerInterface", "InteractiveView/1.9999"},
                                           WrongPlugin{"ThrowsWhileLoading", "no licence for this station"},
                                           WrongPlugin{"ThrowsNumber", "an exception of an unknown type"},
                                           WrongPlugin{"MissingFunction", "measure"},
                                           WrongPlugin{"OtherObject", "OtherObject"},
                                           WrongPlugin{"NoPlugin", "NoPlugin"}),
                         [](const auto &testCase) { return std::string(testCase.param.name); });

TEST(StartFailure, APluginThatIsNotThereIsToldWithItsPath)
{
    StationRun station;
    station.perSystem("return true").plugin("/nowhere/libNothing.so").run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_TRUE(station.errorLine().contains("/nowhere/libNothing.so")) << station.errors().toStdString();
}

TEST(StartFailure, TwoPluginsWithAFunctionOfTheSameNameAreNamedWithIt)
{
    StationRun station;
    const QString path = QStringLiteral(FIXTURE_PLUGINS_PATH "/libSameFunction.so");
    station.perSystem("return true").argument("--plugin").argument(path).run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_EQ(
        station.errorLine(),
        QStringLiteral("station: plug-in %1: gives the function \"setLoop\", which plug-in %2 gives already")
            .arg(path, QStringLiteral(PLUGIN_PATH)));
}

TEST(StartFailure, ATextFileIsNoPlugin)
{
    StationRun station;
    const QString path = station.file("libText.so", "no library at all\n");
    station.perSystem("return true").plugin(path).run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_TRUE(station.errorLine().contains(path)) << station.errors().toStdString();
}

TEST(StartFailure, AConfigurationThatIsNotThereIsToldWithItsPath)
{
    StationRun station;
    station.perSystem("return true").argument("--config").argument("/nowhere/station.toml").run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_TRUE(station.errorLine().contains("/nowhere/station.toml")) << station.errors().toStdString();
}

TEST(StartFailure, ASequenceOfTheCommandLineThatIsNotThereIsToldWithItsPath)
{
    StationRun station;
    station.perSystem("return true").argument("--sequence").argument("/nowhere/sequence.lua").run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_TRUE(station.errorLine().contains("/nowhere/sequence.lua")) << station.errors().toStdString();
}

TEST(StartFailure, AnOptionThatDoesNotExistIsNamed)
{
    StationRun station;
    station.perSystem("return true").argument("--no-such-option").run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_TRUE(station.errorLine().contains("no-such-option")) << station.errors().toStdString();
}

TEST(StartFailure, AResultsFileThatCannotBeWrittenIsToldWithItsPath)
{
    StationRun station;
    station.perSystem("return true").argument("--results").argument("/nowhere/results.jsonl").run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_TRUE(station.errorLine().contains("/nowhere/results.jsonl")) << station.errors().toStdString();
}

TEST(PluginFailure, AnExceptionOfAnyTypeEndsItsCallWithAnErrorThatASequenceCanCatch)
{
    StationRun station;
    station.plugin(QStringLiteral(FIXTURE_PLUGINS_PATH "/libTellsItsEnd.so"));
    station.perSystem(
        "local ok, why = pcall(throwNumber) return not ok and why == 'an exception of an unknown type'");
    station.passes();
}

TEST(PluginEnd, ComesBeforeThatOfTheWindowAndOfTheMainQueue)
{
    StationRun station;
    station.plugin(QStringLiteral(FIXTURE_PLUGINS_PATH "/libTellsItsEnd.so")).perSystem("return true");
    station.passes();
    EXPECT_EQ(station.errors(), "gone before the window\ngone before the queue\n");
}

TEST(PluginEnd, OfARefusedStationComesBeforeThatOfTheMainQueue)
{
    StationRun station;
    const QString noPlugin = QStringLiteral(FIXTURE_PLUGINS_PATH "/libNoPlugin.so");
    const QString path = QStringLiteral(FIXTURE_PLUGINS_PATH "/libTellsItsEnd.so");
    station.perSystem("return true").plugin(path).argument("--plugin").argument(noPlugin).run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_TRUE(station.errors().contains("gone before the queue\n")) << station.errors().toStdString();
}

/// What a sequence can do with child processes that must not harm the station.
class ChildProcess : public ::testing::TestWithParam<const char *>
{};

TEST_P(ChildProcess, LeavesTheStationAlone)
{
    StationRun station;
    station.perSystem(GetParam()).table("[lua]\nallow = ['io.popen']").passes();
}

INSTANTIATE_TEST_SUITE_P(Ways, ChildProcess,
                         ::testing::Values("local child = io.popen('true', 'w') "
                                           "local ok, why = child:write(string.rep('x', 1000000)) "
                                           "return not ok and why == 'Broken pipe'",
                                           "return io.popen('cat'):read('a') == ''"));

/// A sequence that goes wrong, and what the line says beside the script.
struct WrongSequence
{
    const char *name;
    const char *lua;
    const char *outcome;
    const char *says;
};

void PrintTo(const WrongSequence &wrong, std::ostream *stream)
{
    *stream << wrong.name;
}

class FailingSequence : public ::testing::TestWithParam<WrongSequence>
{};

TEST_P(FailingSequence, IsToldInOneLineAndInTheResults)
{
    StationRun station;
    station.perSystem(GetParam().lua).run();
    EXPECT_EQ(station.status(), 1);
    // The last line printed says how the only sequence ended.
    const QString line = station.output().trimmed().section(QLatin1Char('\n'), -1);
    EXPECT_TRUE(line.startsWith(QStringLiteral("system 0: ") + GetParam().outcome)) << line.toStdString();
    EXPECT_TRUE(line.contains(GetParam().says)) << line.toStdString();
    EXPECT_EQ(station.outcome(0), GetParam().outcome);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, FailingSequence,
    ::testing::Values(
        WrongSequence{"ReturnsFalse", "return false", "failed", "failed"},
        WrongSequence{"RaisesAnError", "\nerror('the fixture is open')", "erred",
                      "sequence1.lua:2: the fixture is open"},
        WrongSequence{"RaisesAnErrorWithoutText",
                      "error(setmetatable({}, { __tostring = function() error('no words') end }))", "erred",
                      "no words"},
        WrongSequence{"TakesAllMemory", "local t = {} while true do t = { t } end", "erred",
                      "not enough memory"},
        WrongSequence{"IsNoLua", "x = = 1", "erred", "sequence1.lua:1: "},
        WrongSequence{"CallsWhatIsNotThere", "showViews(1, {})", "erred", "showViews"},
        WrongSequence{"GivesTooFewArguments", "showView(systemIndex)", "erred", "showView"},
        WrongSequence{"GivesAWrongArgument", "showView(systemIndex, 'SN')", "erred", "argument 2"},
        WrongSequence{"NamesAGroupBeyondTheStation", "showGroupView(3, {})", "erred", "3"}),
    [](const auto &testCase) { return std::string(testCase.param.name); });

TEST(OperatorFailure, TheCallsThatLedToItStandAsOneEntryInTheLog)
{
    StationRun station;
    station.perSystem("return true")
        .operatorDoes("local function look()\n  expect(false, 'the lamp is off')\nend\nlook()")
        .run();
    EXPECT_EQ(station.status(), 1);
    const qsizetype why = station.log().indexOf(": the lamp is off\n    stack traceback:");
    EXPECT_GT(why, 0) << station.log().toStdString();
    EXPECT_GT(station.log().indexOf("in local 'look'", why), 0);
    EXPECT_GT(station.log().lastIndexOf(" error ", why), station.log().lastIndexOf('\n', why));
}

TEST(SequenceFailure, TheCallsThatLedToItStandInTheResultsAndAsOneEntryInTheLog)
{
    StationRun station;
    station.slotNames({"S1"})
        .perSystem("local function ask()\n  error('the fixture is open')\nend\nask()")
        .run();
    EXPECT_EQ(station.status(), 1);
    const QJsonObject end = station.end("0");
    EXPECT_EQ(end.value("message").toString(), "sequence1.lua:2: the fixture is open");
    EXPECT_EQ(end.value("traceback").toString(),
              "stack traceback:\n\t[C]: in function 'error'\n\tsequence1.lua:2: in local 'ask'\n"
              "\tsequence1.lua:4: in main chunk");
    const qsizetype entry =
        station.log().indexOf("sequence1.lua:2: the fixture is open\n    stack traceback:");
    EXPECT_GE(entry, 0) << station.log().toStdString();
}

TEST(OperatorFailure, AFailedScriptEndsTheRunAndIsToldInOneLine)
{
    StationRun station;
    station.perSystem(R"(return showView(systemIndex, { input = { "SN" } }) ~= nil)");
    station.operatorDoes(R"(operator.waitForPanel("7", 0.2))");
    station.run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_TRUE(station.errors().contains("operator.lua:1: no panel \"7\" within 0.2 s"))
        << station.errors().toStdString();
    EXPECT_EQ(station.outcome(0), "stopped");
}

TEST(OperatorFailure, AnErrorObjectWithoutTextIsToldInOneLine)
{
    StationRun station;
    station.perSystem("return true");
    station.operatorDoes("error(setmetatable({}, { __tostring = function() error('no words') end }))");
    station.run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errorLine(),
              "station: operator: an error that has no text (a table: operator.lua:1: no words)");
}

TEST(OperatorFailure, AFailedScriptSpoilsARunInWhichNoSequenceFailed)
{
    StationRun station;
    station.perSystem("return true").operatorDoes("error('the lamp is off')");
    station.run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errorLine(), "station: operator: operator.lua:1: the lamp is off");
    // The script's end stops the run; a sequence may have passed before.
    EXPECT_TRUE(station.outcome(0) == "passed" || station.outcome(0) == "stopped");
}

TEST(ResultsFailure, ResultsThatAreLostSpoilARunInWhichEverySequencePassed)
{
    StationRun station;
    station.perSystem("return true").argument("--results").argument("/dev/full");
    station.run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errors(), "station: results cannot be written: /dev/full: No space left on device\n"
                                "station: results are lost: /dev/full: No space left on device\n");
}

} // namespace
