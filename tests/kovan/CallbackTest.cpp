#include "platform/Callback.h"

#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "kovan/KovanLuaSequencer/KVKLuaRun.h"
#include "tests/kovan/SequenceRun.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <thread>

using platform::Array;
using platform::Callback;
using platform::Dictionary;
using platform::Value;
using testsupport::SequenceRun;

namespace {

/// A plug-in's context whose `ask` takes a function under "check".
class Asker : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("function keys of ask", "check filter")
public:
    using Body = std::function<Value(const std::shared_ptr<Callback> &check)>;

    Q_INVOKABLE platform::Value ask(const platform::Dictionary &config, platform::Error *)
    {
        given = config;
        return body(config.value("check").value<std::shared_ptr<Callback>>());
    }
    Q_INVOKABLE platform::Value plain(const platform::Dictionary &config, platform::Error *)
    {
        return config;
    }
    Q_INVOKABLE platform::Value isInside(platform::Error *) { return Callback::isRunning(); }

    Body body = [](const std::shared_ptr<Callback> &check) -> Value {
        return check ? check->call({QStringLiteral("A1"), qlonglong{7}}) : Array();
    };
    Dictionary given;
};

std::vector<KVKBoundFunction> functionsOf(Asker &asker)
{
    const QString dictionary = __kviArgTypeLabel(KVKArgType::NSDictionary);
    return KVKBindFunctions(&asker, {{"ask", Array{__kviGetSelectorLabel("ask:error:"), dictionary}},
                                     {"plain", Array{__kviGetSelectorLabel("plain:error:"), dictionary}},
                                     {"isInside", Array{__kviGetSelectorLabel("isInside:")}}});
}

/// A function of Lua that a plug-in gets and calls back.
class CallbackTest : public ::testing::Test
{
protected:
    KVKLuaEnd endOf(const QByteArray &script)
    {
        SequenceRun run(script);
        run.description.functions = functionsOf(asker);
        run.description.run = company;
        KVKLuaEnd end = run.end();
        calls = run.calls();
        return end;
    }
    Value valueOf(const QByteArray &script)
    {
        const KVKLuaEnd end = endOf(script);
        EXPECT_EQ(end.message, "") << script.toStdString();
        return end.value;
    }
    QString problemOf(const QByteArray &script)
    {
        const KVKLuaEnd end = endOf(script);
        EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred);
        return end.message;
    }

    Asker asker;
    std::vector<KVKLuaCall> calls;
    std::shared_ptr<KVKLuaRun> company; ///< Null for a sequence by itself.
};

TEST_F(CallbackTest, GetsItsArgumentsAndGivesAllItsResults)
{
    Array results;
    asker.body = [&](const std::shared_ptr<Callback> &check) -> Value {
        results = check->call({QStringLiteral("A1"), qlonglong{7}});
        return {};
    };
    valueOf("ask({ check = function(text, n) return text .. n, n + 1, nil, true end })");
    EXPECT_EQ(results, (Array{"A17", qlonglong{8}, Value(), true}));
}

TEST_F(CallbackTest, GivesNothingWhereItReturnsNothing)
{
    EXPECT_EQ(valueOf("return #ask({ check = function() end })"), Value(qlonglong{0}));
}

TEST_F(CallbackTest, MayBeCalledOftenAndSeesTheVariablesAroundIt)
{
    asker.body = [](const std::shared_ptr<Callback> &check) -> Value {
        for (int i = 0; i < 1000; ++i)
            static_cast<void>(check->call({QString(100, QLatin1Char('x'))}));
        return {};
    };
    EXPECT_EQ(valueOf("local n = 0 ask({ check = function(text) n = n + #text return {} end }) return n"),
              Value(qlonglong{100000}));
}

TEST_F(CallbackTest, MayBeHandedOverByACoroutine)
{
    EXPECT_EQ(valueOf("return coroutine.wrap(function() "
                      "return (ask({ check = function(t) return t end })) end)()"),
              Value(Array{"A1"}));
}

TEST_F(CallbackTest, IsDescribedInWords)
{
    valueOf("ask({ check = print })");
    EXPECT_EQ(platform::description(asker.given), "{check = <function>}");
    EXPECT_EQ(platform::description(platform::ownCopy(asker.given)), "{check = <function>}");
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(platform::description(calls.front().arguments), "({check = <function>})");
}

TEST_F(CallbackTest, IsRefusedUnderAnotherKeyAndDeeperAndByAFunctionThatTakesNone)
{
    EXPECT_EQ(problemOf("ask({ other = print })"),
              "script.lua:1: ask: argument 1.other is a function, which cannot be passed on");
    EXPECT_EQ(problemOf("ask({ a = { check = print } })"),
              "script.lua:1: ask: argument 1.a.check is a function, which cannot be passed on");
    EXPECT_EQ(problemOf("ask({ check = { print } })"),
              "script.lua:1: ask: argument 1.check[1] is a function, which cannot be passed on");
    EXPECT_EQ(problemOf("plain({ check = print })"),
              "script.lua:1: plain: argument 1.check is a function, which cannot be passed on");
}

TEST_F(CallbackTest, AnErrorInItEndsTheCallWithBothTracebacks)
{
    const QString problem = problemOf("local function broken(text)\n"
                                      "  error('no line for ' .. text)\n"
                                      "end\n"
                                      "ask({ check = broken })\n");
    EXPECT_TRUE(problem.startsWith("script.lua:4: script.lua:2: no line for A1\nstack traceback:\n"))
        << problem.toStdString();
    EXPECT_GT(problem.indexOf("script.lua:2: in"), 0) << problem.toStdString();
    EXPECT_GT(problem.indexOf("script.lua:4: in main chunk"), problem.indexOf("script.lua:2: in"))
        << problem.toStdString();
}

TEST_F(CallbackTest, AnErrorInItCanBeCaughtAroundTheCall)
{
    EXPECT_EQ(valueOf("local ok, why = pcall(ask, { check = function() error('x', 0) end }) "
                      "return { ok, why:match('^[^\\n]*') }"),
              Value(Array{false, "x"}));
}

TEST_F(CallbackTest, ErrorsThatAreNoTextsAreNamed)
{
    EXPECT_TRUE(problemOf("ask({ check = function() error({}) end })")
                    .startsWith("script.lua:1: an error that has no text (a table)"));
    EXPECT_TRUE(problemOf("ask({ check = function() error() end })")
                    .startsWith("script.lua:1: an error that has no text (a nil)"));
    EXPECT_TRUE(problemOf("ask({ check = function() "
                          "error(setmetatable({}, { __tostring = function() return 'mine' end })) end })")
                    .startsWith("script.lua:1: mine"));
    // Whatever is made of this one: the sequence ends with an error, and the station goes on.
    EXPECT_NE(problemOf("ask({ check = function() "
                        "error(setmetatable({}, { __tostring = function() error('again') end })) end })"),
              "");
}

TEST_F(CallbackTest, CannotYield)
{
    EXPECT_TRUE(problemOf("coroutine.wrap(function() ask({ check = coroutine.yield }) end)()")
                    .contains("attempt to yield"));
}

TEST_F(CallbackTest, AResultThatCannotBePassedOnIsNamed)
{
    EXPECT_EQ(problemOf("ask({ check = function() return true, print end })"),
              "script.lua:1: ask: argument 1.check: result 2 is a function, which cannot be passed on");
}

TEST_F(CallbackTest, AnEndlessRecursionInItIsAnError)
{
    EXPECT_TRUE(problemOf("local function deep() return 1 + deep() end ask({ check = deep })")
                    .contains("stack overflow"));
}

TEST_F(CallbackTest, KnowsThatItRuns)
{
    EXPECT_EQ(valueOf("local inside ask({ check = function() inside = isInside() end }) "
                      "return { inside, (isInside()) }"),
              Value(Array{true, false}));
    problemOf("ask({ check = error })");
    EXPECT_FALSE(Callback::isRunning());
}

TEST_F(CallbackTest, ARendezvousInItIsAnError)
{
    company = std::make_shared<KVKLuaRun>(std::vector<KVKLuaPartner>{{"system 0", "G1"}});
    EXPECT_TRUE(problemOf("ask({ check = function() rendezvous('start') end })")
                    .contains("rendezvous: cannot be called inside a function that was handed to a call, "
                              "which would wait as well"));
}

TEST_F(CallbackTest, ALockThatIsFreeMayBeTakenInItAndOneThatIsNotIsAnError)
{
    company = std::make_shared<KVKLuaRun>(
        std::vector<KVKLuaPartner>{{"system 0", "G1"}, {"system 1", "G1"}, {"system 2", "G1"}});
    EXPECT_EQ(valueOf("local got ask({ check = function() got = locked('meter', function() return 5 end) "
                      "end }) return got"),
              Value(qlonglong{5}));
    company = std::make_shared<KVKLuaRun>(
        std::vector<KVKLuaPartner>{{"system 0", "G1"}, {"system 1", "G1"}, {"system 2", "G1"}});
    ASSERT_TRUE(company->enter(1, "meter"));
    EXPECT_TRUE(problemOf("ask({ check = function() locked('meter', print) end })")
                    .contains("locked: cannot wait for lock \"meter\" inside a function that was handed to "
                              "a call"));
    // The place in the queue is given up: the next in line gets the lock.
    company->leave(1, "meter");
    EXPECT_TRUE(company->enter(2, "meter"));
}

TEST_F(CallbackTest, IsGoneWhenTheCallHasReturned)
{
    std::shared_ptr<Callback> kept;
    QString why;
    asker.body = [&](const std::shared_ptr<Callback> &check) -> Value {
        if (!kept) {
            kept = check;
            return {};
        }
        try {
            return kept->call({});
        } catch (const std::exception &problem) {
            why = QString::fromUtf8(problem.what());
        }
        return {};
    };
    valueOf("ask({ check = function() end }) ask({ check = function() end })");
    EXPECT_EQ(why, "ask: argument 1.check: called after the call that it was handed to");
    EXPECT_EQ(platform::description(Value::fromValue(kept)), "<function>");
    EXPECT_THROW(static_cast<void>(kept->call({})), std::runtime_error);
}

TEST_F(CallbackTest, IsGoneAlsoWhenTheCallHasThrown)
{
    std::shared_ptr<Callback> kept;
    asker.body = [&](const std::shared_ptr<Callback> &check) -> Value {
        kept = check;
        throw std::runtime_error("broken");
    };
    EXPECT_EQ(valueOf("local released = setmetatable({}, { __mode = 'k' }) "
                      "do local f = function() return released end released[f] = true "
                      "pcall(ask, { check = f }) end collectgarbage() return next(released) == nil"),
              Value(true))
        << "the state keeps what was handed over";
}

TEST_F(CallbackTest, IsCalledOnNoOtherThread)
{
    QString why;
    asker.body = [&](const std::shared_ptr<Callback> &check) -> Value {
        std::thread other([&] {
            try {
                static_cast<void>(check->call({}));
            } catch (const std::exception &problem) {
                why = QString::fromUtf8(problem.what());
            }
        });
        other.join();
        return {};
    };
    valueOf("ask({ check = function() end })");
    EXPECT_EQ(why, "ask: argument 1.check: called on another thread than its own");
}

TEST_F(CallbackTest, OneThatRunsForEverEndsWithTheStop)
{
    SequenceRun run("log('x') ask({ check = function() isInside() while true do pcall(error) end end })");
    run.description.functions = functionsOf(asker);
    run.start();
    run.waitForCall("isInside");
    run.stop();
    const KVKLuaEnd end = run.end();
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Stopped);
}

} // namespace

#include "CallbackTest.moc"
