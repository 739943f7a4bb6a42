#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "tests/kovan/Instrument.h"
#include "tests/kovan/SequenceRun.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testsupport::Instrument;
using testsupport::SequenceRun;

namespace {

std::vector<KVKBoundFunction> functionsOf(Instrument &instrument)
{
    const QString number = __kviArgTypeLabel(KVKArgType::NSNumber);
    const QString dictionary = __kviArgTypeLabel(KVKArgType::NSDictionary);
    return KVKBindFunctions(&instrument, {{"measure", Array{__kviGetSelectorLabel("measureAt:config:error:"),
                                                            number, dictionary}},
                                          {"give", Array{__kviGetSelectorLabel("give:error:"), dictionary}},
                                          {"fail", Array{__kviGetSelectorLabel("fail:")}},
                                          {"throw", Array{__kviGetSelectorLabel("throwing:")}},
                                          {"wait", Array{__kviGetSelectorLabel("wait:")}}});
}

class LuaCallTest : public ::testing::Test
{
protected:
    Value valueOf(const QByteArray &script)
    {
        SequenceRun run(script);
        run.description.functions = functionsOf(instrument);
        const KVKLuaEnd end = run.end();
        EXPECT_EQ(end.message, "") << script.toStdString();
        calls = run.calls();
        return end.value;
    }

    QString problemOf(const QByteArray &script)
    {
        SequenceRun run(script);
        run.description.functions = functionsOf(instrument);
        const KVKLuaEnd end = run.end();
        EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred);
        calls = run.calls();
        return end.message;
    }

    Instrument instrument;
    std::vector<KVKLuaCall> calls;
};

TEST_F(LuaCallTest, ReturnsResultAndNoError)
{
    EXPECT_EQ(valueOf("local result, problem = measure(4, { times = 3 }) return { result, problem == nil }"),
              Value(Array{qlonglong{12}, true}));
}

TEST_F(LuaCallTest, ReturnsNilAndAnErrorWithDomainCodeAndMessage)
{
    EXPECT_EQ(
        valueOf("local result, problem = fail() return { result == nil, problem }"),
        Value(Array{
            true, Dictionary{{"domain", "Instrument"}, {"code", qlonglong{5}}, {"message", "no contact"}}}));
}

TEST_F(LuaCallTest, TablesComeBackAsTheyWent)
{
    EXPECT_EQ(valueOf("local t = give({ a = { 1, 2.5, 'x' }, b = true, c = { d = 'e' } }) "
                      "return t.a[1] == 1 and math.type(t.a[2]) == 'float' and t.a[3] == 'x' and t.b == true "
                      "and t.c.d == 'e'"),
              Value(true));
}

TEST_F(LuaCallTest, AWrongNumberOrTypeOfArgumentsIsNamed)
{
    EXPECT_EQ(problemOf("measure('4', {})"),
              "script.lua:1: measure: argument 1 must be a number, not string");
    EXPECT_EQ(problemOf("measure(4)"), "script.lua:1: measure: argument 2 must be a table, not no value");
    EXPECT_EQ(problemOf("\nmeasure(4, nil)"), "script.lua:2: measure: argument 2 must be a table, not nil");
    EXPECT_EQ(problemOf("measure(4, {}, 5)"), "script.lua:1: measure: takes 2 arguments, got 3");
    EXPECT_EQ(problemOf("fail(1)"), "script.lua:1: fail: takes 0 arguments, got 1");
    EXPECT_EQ(problemOf("give({ f = print })"),
              "script.lua:1: give: argument 1.f is a function, which cannot be passed on");
}

TEST_F(LuaCallTest, AnExceptionOfThePluginIsALuaErrorThatCanBeCaught)
{
    EXPECT_EQ(problemOf("throw()"), "script.lua:1: 9 is out of range");
    EXPECT_EQ(valueOf("local ok, why = pcall(throw) return { ok, why }"),
              Value(Array{false, "9 is out of range"}));
}

TEST_F(LuaCallTest, EveryCallIsToldWithItsArgumentsAndItsEnd)
{
    valueOf("measure(4, { times = 2 }) fail() pcall(throw)");
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[0].name, "measure");
    EXPECT_EQ(calls[0].arguments, (Array{qlonglong{4}, Dictionary{{"times", qlonglong{2}}}}));
    EXPECT_EQ(calls[0].result, Value(qlonglong{8}));
    EXPECT_FALSE(calls[0].error);
    EXPECT_EQ(calls[1].error.value_or(platform::Error{}).code, 5);
    EXPECT_EQ(calls[2].error.value_or(platform::Error{}).localizedDescription, "9 is out of range");
}

TEST_F(LuaCallTest, ACallGoesOnWhenTheSequenceIsStopped)
{
    SequenceRun run("wait() measure(1, {})");
    run.description.functions = functionsOf(instrument);
    run.start();
    run.waitForCall("wait");
    run.stop();
    EXPECT_FALSE(run.hasEnded());
    instrument.letGo();
    EXPECT_EQ(run.end().outcome, KVKLuaOutcome::Stopped);
    ASSERT_EQ(run.calls().size(), 1U) << "the script ends before it makes the next call";
    EXPECT_EQ(run.calls()[0].result, Value(true));
}

TEST_F(LuaCallTest, CoroutinesMayCallToo)
{
    EXPECT_EQ(valueOf("return coroutine.wrap(function() return (measure(2, { times = 2 })) end)()"),
              Value(qlonglong{4}));
}

} // namespace
