#include "tests/check/CheckFixture.h"

#include <QDirIterator>
#include <QProcess>

namespace {

using Files = testsupport::CheckTest;

struct Outcome
{
    int status;
    QString output;
    QString errors;
};

Outcome stationWith(const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // As on a computer without any display.
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(STATION_PATH), arguments);
    EXPECT_TRUE(process.waitForFinished(100'000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST_F(Files, EveryExampleIsClean)
{
    int count = 0;
    QDirIterator folders(QStringLiteral(EXAMPLES_PATH), {QStringLiteral("station.toml")}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (folders.hasNext()) {
        const QString config = folders.next();
        // Its plug-in is built against what is installed, and it is looked at there.
        if (config.contains(QStringLiteral("/examples/plugin/")))
            continue;
        const QString operators = QFileInfo(config).absoluteDir().filePath(QStringLiteral("operator.lua"));
        EXPECT_EQ(linesOf({config}, QFileInfo::exists(operators) ? QStringList{operators} : QStringList()),
                  QStringList())
            << config.toStdString();
        ++count;
    }
    EXPECT_GE(count, 20);
}

TEST_F(Files, ABrokenOneDoesNotHideTheOthers)
{
    const QString good = files.write("good.lua", "log(\"x\")");
    const QString broken = files.write("broken.lua", "log(");
    const QString wrong = files.write("wrong.lua", "lg(\"x\")");
    EXPECT_EQ(linesOf({wrong, good, broken, files.path("missing.lua"), files.folder() + "/"}),
              (QStringList{":1: is a folder", "broken.lua:1: unexpected symbol near <eof>",
                           "missing.lua:1: No such file or directory",
                           "wrong.lua:1:1: 'lg' is not defined; did you mean 'log'?"}));
}

TEST_F(Files, AConfigurationTellsAllThatIsRefusedAboutThePerson)
{
    const QString config = files.write("station.toml", "[station]\n"
                                                       "groups = [\"G1\"]\n"
                                                       "slots = [\"S1\"]\n"
                                                       "system_groups = [\"G1\"]\n"
                                                       "sounds = 1\n"
                                                       "volume = 101\n"
                                                       "ask_operator = \"yes\"\n"
                                                       "badge_pattern = \"(\"\n"
                                                       "images = [\n"
                                                       "  \"nowhere\",\n"
                                                       "  \"elsewhere\"]\n"
                                                       "[scanner]\n"
                                                       "prefx = \"a\"\n"
                                                       "prefix = \"\\t\"\n"
                                                       "suffix = 3\n"
                                                       "terminator = [\"return\",\n"
                                                       "  \"rtn\",\n"
                                                       "  \"esc\"]\n"
                                                       "[results]\n"
                                                       "databas = \"x\"\n"
                                                       "database = \"x\"\n"
                                                       "[operator]\n");
    static_cast<void>(files.write("sequence.lua", "return true"));
    const QStringList lines = linesOf({config});
    QStringList places;
    for (const QString &line : lines)
        places.append(line.section(QLatin1Char(' '), 0, 2));
    QStringList expected;
    for (const auto &[line, key] :
         std::initializer_list<std::pair<int, const char *>>{{1, "sequence"},
                                                             {2, "station.groups"},
                                                             {5, "station.sounds"},
                                                             {6, "station.volume"},
                                                             {7, "station.ask_operator"},
                                                             {8, "station.badge_pattern"},
                                                             {10, "station.images"},
                                                             {11, "station.images"},
                                                             {13, "scanner.prefx"},
                                                             {14, "scanner.prefix"},
                                                             {15, "scanner.suffix"},
                                                             {17, "scanner.terminator"},
                                                             {18, "scanner.terminator"},
                                                             {20, "results.databas"},
                                                             {21, "results.database"},
                                                             {22, "operator"}})
        expected.append(QStringLiteral("station.toml:%1: key '%2':").arg(line).arg(QLatin1String(key)));
    EXPECT_EQ(places, expected) << lines.join('\n').toStdString();
}

TEST_F(Files, AConfigurationTellsAllThatIsRefused)
{
    const QString config = files.write("station.toml", "[station]\n"
                                                       "nam = \"x\"\n"
                                                       "groups = [\"G1\", \"G1\"]\n"
                                                       "slots = [\"S1\", \"\"]\n"
                                                       "locale = \"xx_nowhere\"\n"
                                                       "[[system]]\n"
                                                       "index = 0\n"
                                                       "background = \"no colour\"\n"
                                                       "text = 3\n"
                                                       "[[sequence]]\n"
                                                       "script = \"missing.lua\"\n"
                                                       "[[sequence]]\n"
                                                       "script = \"sequence.lua\"\n"
                                                       "per = \"slot\"\n");
    static_cast<void>(files.write("sequence.lua", "slep(1)"));
    const QStringList lines = linesOf({config});
    QStringList places;
    for (const QString &line : lines)
        places.append(line.section(QLatin1Char(' '), 0, 2));
    EXPECT_EQ(places, (QStringList{
                          "sequence.lua:1:1: 'slep' is",
                          "station.toml:2: key 'station.nam':", "station.toml:3: key 'station.groups':",
                          "station.toml:4: key 'station.slots':", "station.toml:5: key 'station.locale':",
                          "station.toml:8: key 'system.background':", "station.toml:9: key 'system.text':",
                          "station.toml:11: key 'sequence.script':", "station.toml:14: key 'sequence.per':"}))
        << lines.join('\n').toStdString();
}

TEST_F(Files, ThatAreNoTextAreToldInOneLineEach)
{
    QByteArray garbage;
    for (int i = 0; i < 5000; ++i)
        garbage.append(static_cast<char>((i * 7919) % 256));
    const QStringList lines =
        linesOf({files.write("garbage.lua", garbage), files.write("garbage.toml", garbage)});
    ASSERT_EQ(lines.size(), 2) << lines.join('\n').toStdString();
    EXPECT_TRUE(lines.at(0).startsWith("garbage.lua:1: ")) << lines.at(0).toStdString();
    EXPECT_TRUE(lines.at(1).startsWith("garbage.toml:1: ")) << lines.at(1).toStdString();
    EXPECT_FALSE(lines.join(QString()).contains('\n'));
}

TEST_F(Files, OfTwentyThousandLinesAreReadToTheEnd)
{
    QByteArray script;
    for (int i = 0; i < 20'000; ++i)
        script += "do local cfg = { input = { 'SN' }, length = " + QByteArray::number(i % 9) +
                  " } showView(systemIndex, cfg) end\n";
    EXPECT_EQ(linesOf({station(script + "slep(1)")}),
              QStringList{"sequence.lua:20001:1: 'slep' is not defined; did you mean 'sleep'?"});
}

TEST_F(Files, WithTablesNestedAsDeepAsLuaAllowsAreReadToTheEnd)
{
    const QByteArray deep = QByteArray("{ x = ").repeated(180) + "1" + QByteArray(" }").repeated(180);
    EXPECT_EQ(linesOf({station("showView(systemIndex, { number = " + deep + " })\nslep(1)")}),
              QStringList{"sequence.lua:2:1: 'slep' is not defined; did you mean 'sleep'?"});
    const QByteArray tooDeep = QByteArray("{").repeated(5000) + QByteArray("}").repeated(5000);
    const QStringList lines = linesOf({station("local t = " + tooDeep)});
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines.at(0).startsWith("sequence.lua:1: ")) << lines.at(0).toStdString();
}

// What meets what

TEST_F(Files, AModuleThatTwoSequencesLoadIsToldOfOnce)
{
    static_cast<void>(files.write("m.lua", "slep(1)"));
    static_cast<void>(files.write("a.lua", "require 'm'"));
    static_cast<void>(files.write("b.lua", "require 'm' require 'a'"));
    const QString config =
        files.write("station.toml", "[station]\ngroups = [\"G\"]\nslots = [\"S\"]\n[[sequence]]\n"
                                    "script = \"a.lua\"\n[[sequence]]\nscript = \"b.lua\"\n"
                                    "[[sequence]]\nscript = \"a.lua\"\nper = \"group\"\n");
    EXPECT_EQ(linesOf({config, files.path("a.lua")}),
              QStringList{"m.lua:1:1: 'slep' is not defined; did you mean 'sleep'?"});
}

TEST_F(Files, ModulesThatLoadEachOtherAreReadOnce)
{
    static_cast<void>(files.write("x.lua", "require 'y' one = two"));
    static_cast<void>(files.write("y.lua", "require 'x' two = one"));
    EXPECT_EQ(linesOf({station("require 'x'")}), QStringList());
}

TEST_F(Files, OneFileForTwoStationsIsJudgedByEach)
{
    const QString small = station("showView(3, {})");
    const QString large =
        files.write("large.toml", "[station]\ngroups = [\"G1\"]\nslots = [\"S1\"]\n[[sequence]]\n"
                                  "script = \"sequence.lua\"\n");
    EXPECT_EQ(linesOf({small}), QStringList());
    EXPECT_EQ(
        linesOf({small, large}),
        QStringList{"sequence.lua:1:10: showView: system index 3 is beyond the station's systems (0 to 0)"});
}

TEST_F(Files, WhatTheConfigurationAllowsIsNotToldOf)
{
    static_cast<void>(files.write("sequence.lua", "os.execute('x')\nprint(debug.getinfo(1))\nio.popen('x')"));
    static_cast<void>(files.write("thing.so", "a library"));
    const QString lua =
        files.write("operator.lua", "operator.wait(debug.getinfo(1), 1)\nos.exit()\nrequire('thing')");
    ASSERT_TRUE(qputenv("LUA_CPATH", files.path("?.so").toUtf8()));
    const auto problems = [&](const QByteArray &allowed) {
        return linesOf({files.write("station.toml",
                                    "[station]\ngroups = ['G1']\nslots = ['S1']\n[lua]\nallow = [" + allowed +
                                        "]\n[[sequence]]\nscript = 'sequence.lua'\n")},
                       {lua})
            .filter("lua.allow");
    };
    EXPECT_EQ(problems("'os.execute', 'debug', 'io.popen', 'os.exit', 'package.loadlib'"), QStringList());
    EXPECT_EQ(
        problems("'os.execute', 'debug'"),
        (QStringList{"operator.lua:2:4: os.exit is not available to an operator's script; the configuration "
                     "allows it with lua.allow = [\"os.exit\"]",
                     "operator.lua:3:9: module 'thing' is written in C; the configuration allows it with "
                     "lua.allow = [\"package.loadlib\"]",
                     "sequence.lua:3:4: io.popen is not available to a sequence; the configuration allows "
                     "it with lua.allow = [\"io.popen\"]"}));
    EXPECT_EQ(problems("").size(), 6);
    qunsetenv("LUA_CPATH");
}

TEST_F(Files, TheProgramNeedsNoDisplayAndTellsByItsStatus)
{
    const QString config = station("slep(1)");
    const QStringList plugin{"--plugin", PLUGIN_PATH};
    const Outcome wrong = stationWith(QStringList{"check", config} + plugin);
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(wrong.output,
              files.path("sequence.lua") + ":1:1: 'slep' is not defined; did you mean 'sleep'?\n");
    EXPECT_EQ(wrong.errors, "");
    const Outcome right = stationWith(QStringList{"check", station("sleep(1)")} + plugin);
    EXPECT_EQ(right.status, 0) << right.errors.toStdString();
    EXPECT_EQ(right.output + right.errors, "");
    for (const QStringList &usage : {QStringList{"check"}, QStringList{"check", "--wrong"},
                                     QStringList{"check", config, "--plugin", "/nowhere/x.so"}}) {
        const Outcome refused = stationWith(usage);
        EXPECT_EQ(refused.status, 2) << usage.join(' ').toStdString();
        EXPECT_EQ(refused.errors.count('\n'), 1) << refused.errors.toStdString();
        EXPECT_EQ(refused.output, "");
    }
}

} // namespace
