#include "tests/kovan/SequenceRun.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Array;
using platform::Value;
using testsupport::SequenceRun;

namespace {

/// A script that reaches for what is not its business, and what it reaches for.
struct Reach
{
    const char *script;
    const char *function;
    const char *allowance;
};

void PrintTo(const Reach &reach, std::ostream *stream)
{
    *stream << reach.script;
}

class NotAllowed : public ::testing::TestWithParam<Reach>
{};

TEST_P(NotAllowed, IsRefusedWithWhatTheConfigurationWouldHaveToSay)
{
    const Reach &reach = GetParam();
    const KVKLuaEnd end = SequenceRun(reach.script).end();
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred);
    EXPECT_TRUE(end.message.endsWith(QStringLiteral("%1 is not available to a sequence; the configuration "
                                                    "allows it with lua.allow = [\"%2\"]")
                                         .arg(reach.function, reach.allowance)))
        << end.message.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Functions, NotAllowed,
    ::testing::Values(Reach{"os.execute('true')", "os.execute", "os.execute"},
                      Reach{"io.popen('true')", "io.popen", "io.popen"},
                      Reach{"os.exit(0)", "os.exit", "os.exit"},
                      Reach{"package.loadlib('/x.so', 'f')", "package.loadlib", "package.loadlib"},
                      Reach{"debug.getinfo(1)", "debug.getinfo", "debug"},
                      Reach{"debug.getregistry()", "debug.getregistry", "debug"},
                      Reach{"debug.getupvalue(load, 1)", "debug.getupvalue", "debug"},
                      Reach{"debug.setmetatable(1, {})", "debug.setmetatable", "debug"},
                      Reach{"debug.upvaluejoin(load, 1, print, 1)", "debug.upvaluejoin", "debug"}));

INSTANTIATE_TEST_SUITE_P(
    WaysRound, NotAllowed,
    ::testing::Values(Reach{"package.loaded.os.execute('true')", "os.execute", "os.execute"},
                      Reach{"require('os').execute('true')", "os.execute", "os.execute"},
                      Reach{"_G['o' .. 's'].execute('true')", "os.execute", "os.execute"},
                      Reach{"coroutine.wrap(os.execute)('true')", "os.execute", "os.execute"},
                      Reach{"coroutine.wrap(function() io.popen('true') end)()", "io.popen", "io.popen"},
                      Reach{"load('os.execute(...)')('true')", "os.execute", "os.execute"},
                      Reach{"load('os.execute()', 'a', 't', setmetatable({}, { __index = _G }))()",
                            "os.execute", "os.execute"},
                      Reach{"string.gsub('true', '.+', os.execute)", "os.execute", "os.execute"},
                      Reach{"setmetatable({}, { __call = os.execute })('true')", "os.execute", "os.execute"},
                      Reach{"local a <close> = setmetatable({}, { __close = os.exit })", "os.exit",
                            "os.exit"},
                      Reach{"error(select(2, pcall(io.popen, 'true')), 0)", "io.popen", "io.popen"}));

TEST(Allowed, AreTheFunctionsThatTheLimitsName)
{
    const auto valueOf = [](const char *script, const char *allowance) {
        SequenceRun run(script);
        run.description.limits.allowed = {QString::fromLatin1(allowance)};
        const KVKLuaEnd end = run.end();
        EXPECT_EQ(end.message, "") << script;
        return end.value;
    };
    EXPECT_EQ(valueOf("return select(3, os.execute('exit 3'))", "os.execute"), Value(qlonglong{3}));
    EXPECT_EQ(valueOf("return io.popen('echo 7'):read('n')", "io.popen"), Value(qlonglong{7}));
    EXPECT_EQ(valueOf("return select(3, package.loadlib('/nowhere.so', 'f'))", "package.loadlib"),
              Value("open"));
    EXPECT_EQ(valueOf("\nreturn debug.getinfo(1, 'l').currentline", "debug"), Value(qlonglong{2}));
    EXPECT_EQ(valueOf("return (pcall(os.execute, 'true'))", "io.popen"), Value(false));
    EXPECT_EQ(valueOf("return (pcall(debug.sethook))", "debug"), Value(false)) << "ends endless loops";
    EXPECT_EQ(valueOf("return debug.traceback('a'):sub(1, 2)", "os.exit"), Value("a\n"));
}

TEST(Allowed, AModuleInCNeedsLibrariesToBeLoaded)
{
    constexpr const char *script = "package.cpath = folder .. '/?.so' require('thing')";
    const auto messageFor = [&](const QStringList &allowed) {
        SequenceRun run(script);
        run.addFile("thing.so", "no library");
        run.description.globals = {{"folder", run.folder()}};
        run.description.limits.allowed = allowed;
        return run.end().message;
    };
    const QString refused = messageFor({});
    EXPECT_TRUE(refused.contains("module 'thing' not found")) << refused.toStdString();
    EXPECT_TRUE(
        refused.contains("package.loadlib is not available to a sequence; the configuration allows it "
                         "with lua.allow = [\"package.loadlib\"]"))
        << refused.toStdString();
    EXPECT_TRUE(messageFor({"package.loadlib"}).contains("error loading module 'thing' from file"));
}

/// A script that loads bytecode, beside a file of it.
class Bytecode : public ::testing::TestWithParam<std::pair<const char *, const char *>>
{};

TEST_P(Bytecode, IsNotLoadedAndIsNamed)
{
    SequenceRun run(GetParam().first);
    run.addFile("code.lua", "\x1bLuaT and so on");
    run.description.globals = {{"folder", run.folder()}};
    const KVKLuaEnd end = run.end();
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred);
    EXPECT_TRUE(end.message.contains(
        QStringLiteral("%1: bytecode is not loaded, only Lua as text").arg(GetParam().second)))
        << end.message.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Ways, Bytecode,
    ::testing::Values(
        std::pair{"assert(load(string.dump(function() end)))", "load"},
        std::pair{"assert(load(string.dump(function() end), '=mine'))", "mine"},
        std::pair{"assert(load(string.dump(function() end), 'mine', 'b'))", "mine"},
        std::pair{"assert(load(string.dump(function() end), 'mine', 'bt', {}))", "mine"},
        std::pair{"assert(load('return 1', 'mine', 'b'))", "mine"},
        std::pair{"local parts = { string.dump(function() end) } "
                  "assert(load(function() return table.remove(parts) end, '@mine'))",
                  "mine"},
        std::pair{"assert(coroutine.wrap(load)(string.dump(function() end)))", "load"},
        std::pair{"assert(loadfile(folder .. '/code.lua'))", "/code.lua"},
        std::pair{"assert(loadfile(folder .. '/code.lua', 'b'))", "/code.lua"},
        std::pair{"assert(loadfile(folder .. '/code.lua', 'bt', {}))", "/code.lua"},
        std::pair{"dofile(folder .. '/code.lua')", "/code.lua"}, std::pair{"require('code')", "/code.lua"},
        std::pair{"package.path = folder .. '/co?.lua' require('de')", "/code.lua"},
        std::pair{"table.remove(package.searchers, 2) package.path = folder .. '/?.lua' require('code')",
                  "/code.lua"},
        std::pair{"\x1bLuaT", "script.lua"}));

TEST(Loading, OfTextIsAsItIsInLua)
{
    const auto valueOf = [](const QByteArray &script) {
        SequenceRun run(script);
        run.addFile("far/away.lua", "return { name = ..., low = low }");
        run.addFile("pauses.lua", "return coroutine.yield(1) + 1");
        run.description.globals = {{"folder", run.folder()}};
        const KVKLuaEnd end = run.end();
        EXPECT_EQ(end.message, "") << script.toStdString();
        return end.value;
    };
    EXPECT_EQ(valueOf("return load('return ...')(4)"), Value(qlonglong{4}));
    EXPECT_EQ(valueOf("return load('return a', 'c', 't', { a = 5 })()"), Value(qlonglong{5}));
    EXPECT_EQ(valueOf("return (pcall(load('return os.time()', 'c', nil, nil)))"), Value(false));
    EXPECT_EQ(valueOf("return (select(2, load('return =', '=mine')))"),
              Value("mine:1: unexpected symbol near '='"));
    EXPECT_EQ(valueOf("return select(2, load('x', 'x', 'x'))"),
              Value("x: bytecode is not loaded, only Lua as text"));
    EXPECT_EQ(
        valueOf("local parts = { '6', 'return ' } return load(function() return table.remove(parts) end)()"),
        Value(qlonglong{6}));
    EXPECT_EQ(valueOf("return loadfile(folder .. '/far/away.lua', 't', { low = 4 })('x').low"),
              Value(qlonglong{4}));
    EXPECT_EQ(valueOf("low = 3 return dofile(folder .. '/far/away.lua').low"), Value(qlonglong{3}));
    EXPECT_EQ(valueOf("package.path = folder .. '/far/?.lua' return require('away').name"), Value("away"));
    EXPECT_EQ(valueOf("local run = coroutine.wrap(function() return dofile(folder .. '/pauses.lua') end) "
                      "return run() + run(10)"),
              Value(qlonglong{12}));
    EXPECT_EQ(valueOf("return (loadfile(folder .. '/nowhere.lua'))"), Value());
}

TEST(Loading, NamesTheFunctionThatWasCalledWrongly)
{
    EXPECT_EQ(SequenceRun("load({})").end().message,
              "script.lua:1: bad argument #1 to 'load' (function expected, got table)");
    EXPECT_EQ(SequenceRun("dofile()").end().message,
              "script.lua:1: dofile without a file is not available to a sequence");
    EXPECT_EQ(SequenceRun("loadfile(nil)").end().message,
              "script.lua:1: loadfile without a file is not available to a sequence");
}

} // namespace
