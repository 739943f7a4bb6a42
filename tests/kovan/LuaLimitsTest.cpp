#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "kovan/KovanLuaSequencer/KVKLuaRun.h"
#include "tests/kovan/Instrument.h"
#include "tests/kovan/SequenceRun.h"
#include "tests/support/Printing.h"
#include "tests/support/Wait.h"

#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

using platform::Array;
using platform::Value;
using testsupport::Instrument;
using testsupport::SequenceRun;

namespace {

constexpr std::size_t MebiByte = std::size_t{1024} * 1024;

KVKLuaEnd endWithin(std::size_t mebiBytes, const QByteArray &script)
{
    SequenceRun run(script);
    run.description.limits.memory = mebiBytes * MebiByte;
    return run.end();
}

TEST(LuaMemory, EndsTheScriptThatWantsMoreAtTheLineThatDoes)
{
    const KVKLuaEnd end =
        endWithin(8, "local t = {}\nwhile true do\n  t[#t + 1] = string.rep('x', 1000) .. #t\nend");
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred);
    EXPECT_EQ(end.message, "script.lua:3: not enough memory");
    EXPECT_EQ(endWithin(8, "\nlocal s = string.rep('x', 9 << 20)").message,
              "script.lua:2: not enough memory");
    EXPECT_EQ(endWithin(8, "local t = {}\n\nlocal function f() return 1 + f() end f()").message,
              "script.lua:3: not enough memory");
    EXPECT_EQ(
        endWithin(8, "\nlocal co = coroutine.wrap(function() string.rep('x', 9 << 20) end)\nco()").message,
        "script.lua:3: not enough memory")
        << "where the coroutine was resumed";
}

TEST(LuaMemory, IsAsMuchAsTheLimitsSay)
{
    EXPECT_EQ(endWithin(1, "return 7").value, Value(qlonglong{7}));
    EXPECT_EQ(endWithin(1, "return #string.rep('x', 1 << 20)").outcome, KVKLuaOutcome::Erred);
    EXPECT_EQ(endWithin(4, "return #string.rep('x', 1 << 20)").value, Value(qlonglong{1 << 20}));
    EXPECT_EQ(
        endWithin(8, "local n = 0 for i = 1, 200 do n = n + #string.rep('x', (1 << 21) + i) end return n > 0")
            .value,
        Value(true))
        << "what is given back can be had again";
}

TEST(LuaMemory, OfAScriptThatIsTooLongToBeReadHasNoLine)
{
    EXPECT_EQ(endWithin(1, "local t = {" + QByteArray("'some text', ").repeated(200'000) + "}").message,
              "not enough memory");
}

TEST(LuaMemory, ThatIsRefusedIsAnErrorThatCanBeCaught)
{
    EXPECT_EQ(endWithin(8, "local ok, why = pcall(string.rep, 'x', 1 << 30) return { ok, why }").value,
              Value(Array{false, "not enough memory"}));
    EXPECT_EQ(endWithin(8, "pcall(string.rep, 'x', 1 << 30)\nerror('another')").message,
              "script.lua:2: another");
}

/// Waits without end, in a way in which a script can.
class WorkWithoutEnd : public ::testing::TestWithParam<const char *>
{};

TEST_P(WorkWithoutEnd, IsEndedByTheStop)
{
    Instrument instrument;
    SequenceRun run(QByteArray("begun({}) ") + GetParam());
    run.description.functions =
        KVKBindFunctions(&instrument, {{"begun", Array{__kviGetSelectorLabel("give:error:"),
                                                       __kviArgTypeLabel(KVKArgType::NSDictionary)}}});
    run.start();
    run.waitForCall("begun");
    run.stop();
    EXPECT_EQ(run.end().outcome, KVKLuaOutcome::Stopped);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, WorkWithoutEnd,
    ::testing::Values(
        "while true do end", "while true do pcall(function() while true do end end) end",
        "while true do pcall(error) end", "local function f() return f() end f()",
        "while true do pcall(coroutine.wrap(function() while true do end end)) end",
        "local co = coroutine.create(function() while true do pcall(coroutine.yield) end end) "
        "while true do coroutine.resume(co) end",
        "xpcall(function() while true do end end, function() while true do end end)",
        "while true do xpcall(error, function() while true do end end) end",
        "local function wait() while true do end end "
        "while true do xpcall(function() xpcall(wait, wait) end, function() pcall(wait) end) end",
        "while true do pcall(function() local x <close> = setmetatable({}, { __close = function() "
        "while true do end end }) end) end",
        "pcall(string.gsub, 'x', '.', function() while true do end end) while true do end",
        "pcall(table.sort, { 1, 2, 3 }, function() while true do end end) while true do end",
        "while true do load(function() while true do end end) end",
        "local t = setmetatable({}, { __index = function() while true do end end }) while true do "
        "pcall(function() "
        "return t.x end) end",
        "local function f() pcall(f) pcall(f) end while true do f() end"));

/// A recursion without end, in a way in which a script can, and what it is told.
class Recursion : public ::testing::TestWithParam<const char *>
{};

TEST_P(Recursion, IsAnErrorWithATracebackOfBoundedLength)
{
    SequenceRun run(GetParam());
    run.description.run = std::make_shared<KVKLuaRun>(std::vector<KVKLuaPartner>{{"system 0", "G1"}});
    const KVKLuaEnd end = run.end();
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred);
    EXPECT_TRUE(end.message.contains("overflow") || end.message.contains("error in error handling") ||
                end.message.contains("too complex"))
        << end.message.toStdString();
    EXPECT_LE(end.message.size(), 4097);
    EXPECT_LT(end.traceback.count('\n'), 30) << end.traceback.toStdString();
    EXPECT_LE(end.traceback.size(), 4097);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, Recursion,
    ::testing::Values(
        "local function f() return 1 + f() end f()", "local function f(x) return (x:gsub('.', f)) end f('x')",
        "local function f() return coroutine.wrap(f)() end f()",
        "local function f() table.sort({ 1, 2, 3 }, f) end f()",
        "local function f() assert(pcall(f)) end f()",
        "local function f() local ok, why = xpcall(f, function(e) return e end) error(why, 0) end f()",
        "local t = setmetatable({}, { __tostring = function(t) return tostring(t) end }) tostring(t)",
        "local t = setmetatable({}, { __index = function(t, k) return t[k] end }) return t.x",
        "local t = setmetatable({}, { __concat = function(a, b) return a .. b end }) return t .. t",
        "local function f(n) return locked('a' .. n, f, n + 1) end f(1)",
        "assert(load('return ' .. ('('):rep(100000)))", "assert(load('return ' .. ('{'):rep(100000)))",
        "assert(load(('do '):rep(100000)))", "string.find(('a'):rep(300000), ('a?'):rep(300000) .. 'b')",
        "_G[('x'):rep(1000000)] = function() error(('overflow'):rep(1000000)) end _G[('x'):rep(1000000)]()"));

TEST(LuaStop, EndsALoopOverFunctionsThatWait)
{
    // Each round waits for a line of a pipe, of which there is one.
    SequenceRun run("local pipe, sign = io.open(folder .. '/pipe', 'r+'), io.open(folder .. '/sign', 'w') "
                    "sign:write('x') sign:flush() while true do pcall(pipe.read, pipe, 'l') end");
    run.description.globals = {{"folder", run.folder()}};
    const QString pipe = run.folder() + "/pipe";
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), S_IRUSR | S_IWUSR), 0);
    run.start();
    ASSERT_TRUE(testsupport::waitUntil([&] { return QFile(run.folder() + "/sign").size() == 1; }));
    run.stop();
    QFile writer(pipe);
    ASSERT_TRUE(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_EQ(writer.write("\n"), 1);
    EXPECT_EQ(run.end().outcome, KVKLuaOutcome::Stopped);
}

TEST(LuaErrors, AnErrorObjectThatIsHugeIsCut)
{
    const KVKLuaEnd end = SequenceRun("error(setmetatable({}, { __tostring = function() return "
                                      "string.rep('x', 50000000) end }))")
                              .end();
    EXPECT_EQ(end.message.size(), 4097);
    const KVKLuaEnd tooHuge = endWithin(8, "error(setmetatable({}, { __tostring = function() return "
                                           "string.rep('x', 50000000) end }))");
    EXPECT_EQ(tooHuge.message, "an error that has no text (a table: not enough memory)");
    const KVKLuaEnd nested = SequenceRun("local t = {} for i = 1, 1000000 do t = { t } end error(t)").end();
    EXPECT_TRUE(nested.message.startsWith("table: ")) << nested.message.toStdString();
}

TEST(LuaErrorHandlers, AreCalledAsLuaCallsThem)
{
    const auto valueOf = [](const char *script) {
        const KVKLuaEnd end = SequenceRun(script).end();
        EXPECT_EQ(end.message, "") << script;
        return end.value;
    };
    EXPECT_EQ(valueOf("return { xpcall(function(a, b) return a + b, 3 end, print, 1, 2) }"),
              Value(Array{true, qlonglong{3}, qlonglong{3}}));
    EXPECT_EQ(valueOf("return { xpcall(error, function(e) return e .. '!' end, 'no') }"),
              Value(Array{false, "no!"}));
    EXPECT_EQ(
        valueOf("local run = coroutine.wrap(function() return xpcall(function() return coroutine.yield(1) "
                "end, function() end) end) run() return { run(5) }"),
        Value(Array{true, qlonglong{5}}));
    EXPECT_EQ(
        valueOf(
            "local run = coroutine.wrap(function() return xpcall(function() coroutine.yield() error('a', 0) "
            "end, function(e) return e .. 'b' end) end) run() return { run() }"),
        Value(Array{false, "ab"}));
    EXPECT_EQ(valueOf("local function deep() return 1 + deep() end "
                      "return (select(2, xpcall(deep, function(e) return 'seen' end)))"),
              Value("seen"));
    EXPECT_EQ(valueOf("return select(2, pcall(xpcall, error))"),
              Value("bad argument #2 to 'xpcall' (function expected, got no value)"));
}

} // namespace
