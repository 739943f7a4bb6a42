#include "platform/MainQueue.h"
#include "tests/operator/OperatorFixture.h"
#include "tests/support/Wait.h"

#include <QFile>

namespace {

class Script : public testsupport::OperatorFixture
{
protected:
    void write(const QString &name, const QByteArray &text)
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// A line of a script that tells the main thread that the script runs.
    [[nodiscard]] QString sign() const { return "operator.screenshot('" + path("begun.png") + "')\n"; }
    [[nodiscard]] bool begun() const
    {
        return testsupport::waitUntil([this] { return QFile::exists(path("begun.png")); });
    }
};

} // namespace

TEST_F(Script, ComesToItsEnd)
{
    const Outcome result = run("local x = 1");
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.message, QString());
}

TEST_F(Script, ErrorHasFileAndLine)
{
    EXPECT_EQ(fails("\n\nerror('nothing works')"), "operator.lua:3: nothing works");
}

TEST_F(Script, ErrorTellsTheCallsThatLedToIt)
{
    EXPECT_EQ(run("local function look()\n  expect(false, 'dark')\nend\nlook()").traceback,
              "stack traceback:\n\t[C]: in function 'expect'\n\toperator.lua:2: in local 'look'\n"
              "\toperator.lua:4: in main chunk");
}

TEST_F(Script, SyntaxErrorHasFileAndLine)
{
    EXPECT_EQ(fails("\nlocal = 3"), "operator.lua:2: <name> expected near '='");
}

TEST_F(Script, ErrorThatIsNoTextIsToldAllTheSame)
{
    EXPECT_EQ(fails("error(setmetatable({}, {__tostring = function() return 'odd' end}))"), "odd");
}

TEST_F(Script, ErrorObjectWhoseTextFailsIsNamedWithWhatFailed)
{
    EXPECT_EQ(fails("error(setmetatable({}, {__tostring = function() error('no words') end}))"),
              "an error that has no text (a table: operator.lua:1: no words)");
    EXPECT_EQ(fails("error(setmetatable({}, {__tostring = function() return {} end}))"),
              "an error that has no text (a table: '__tostring' must return a string)");
}

TEST_F(Script, RefusesWhatWouldEndTheStationOrWaitForATerminal)
{
    for (const char *function : {"os.setlocale", "io.read", "debug.sethook", "debug.debug"}) {
        EXPECT_EQ(fails(QLatin1String(function) + "(false)"),
                  QStringLiteral("operator.lua:1: %1 is not available to an operator's script")
                      .arg(QLatin1String(function)));
    }
    EXPECT_EQ(fails("os.execute('true')"),
              "operator.lua:1: os.execute is not available to an operator's script; the configuration allows "
              "it with lua.allow = [\"os.execute\"]");
    EXPECT_EQ(fails("io.stdin:read()"),
              "operator.lua:1: io.stdin:read is not available to an operator's script");
}

TEST_F(Script, MayReturnAnything)
{
    runs("return print");
}

TEST_F(Script, ThatCollectsWithoutEndRunsOutOfItsOwnMemory)
{
    EXPECT_EQ(fails("local t = {} while true do t[#t + 1] = string.rep('x', 1000000) .. #t end"),
              "operator.lua:1: not enough memory");
}

TEST_F(Script, ArgumentsMayBeNumbersAsLuaWritesThem)
{
    EXPECT_EQ(fails("operator.click(7)"), "operator.lua:1: there is no view \"7\"");
    EXPECT_EQ(fails("operator.click(2.0)"), "operator.lua:1: there is no view \"2.0\"");
    EXPECT_EQ(fails("operator.click(-0.5)"), "operator.lua:1: there is no view \"-0.5\"");
    EXPECT_EQ(fails("operator.click(1e300)"), "operator.lua:1: there is no view \"1e+300\"");
}

TEST_F(Script, ThatIsNotThereFailsWithItsPath)
{
    std::optional<Outcome> result;
    station::OperatorScript script(path("none.lua"), station::OperatorStage{&window, root, &context},
                                   [&](const station::OperatorScript::End &end) {
                                       result = Outcome{end.ok, end.message};
                                   });
    script.start();
    ASSERT_TRUE(testsupport::waitUntil([&] { return result.has_value(); }));
    EXPECT_FALSE(result->ok);
    EXPECT_TRUE(result->message.startsWith(path("none.lua") + ": ")) << result->message.toStdString();
}

TEST_F(Script, HasTheFunctionsOfTheOperatorAndNoOthers)
{
    runs("local names = {}\n"
         "for name in pairs(operator) do names[#names + 1] = name end\n"
         "table.sort(names)\n"
         "local got = table.concat(names, ' ')\n"
         "assert(got == 'click enter fill log logIn paste property resize run scan screenshot sleep stop "
         "tree type '\n"
         "    .. 'waitForPanel waitForPanelGone waitForRunEnd waitForText', got)");
}

TEST_F(Script, HasTheStandardLibraries)
{
    runs("assert(string.format('%03d', 7) == '007' and math.max(1, 2) == 2 and os.time() and io.open and "
         "utf8.char)");
}

TEST_F(Script, FindsModulesBesideIt)
{
    write("helpers.lua", "return { answer = 42 }");
    runs("assert(require('helpers').answer == 42)");
}

TEST_F(Script, ExpectationThatHoldsIsQuiet)
{
    runs("expect(1 == 1, 'arithmetic')");
}

TEST_F(Script, ExpectationThatFailsSaysWhere)
{
    EXPECT_EQ(fails("\nexpect(1 == 2, 'arithmetic')"), "operator.lua:2: arithmetic");
    EXPECT_EQ(fails("expect(nil)"), "operator.lua:1: expectation failed");
}

TEST_F(Script, FailureCanBeCaughtAndTheScriptGoesOn)
{
    runs("local ok, text = pcall(operator.click, 'Nobody')\n"
         "assert(not ok and text:find('there is no view \"Nobody\"', 1, true), text)");
}

TEST_F(Script, WorksFromACoroutine)
{
    button(root, {700, 560, 80, 30}, "G1", "G1");
    runs("coroutine.wrap(function() operator.click('G1') end)()");
    EXPECT_EQ(pressed, QStringList("G1"));
}

TEST_F(Script, StopEndsASleep)
{
    station::OperatorScript &script = start(sign() + "operator.sleep(3600)");
    ASSERT_TRUE(begun());
    script.stop();
    EXPECT_EQ(outcome().message, "operator.lua:2: stopped");
}

TEST_F(Script, StopEndsALoopThatComputesForEver)
{
    station::OperatorScript &script = start(sign() + "while true do end");
    ASSERT_TRUE(begun());
    script.stop();
    EXPECT_EQ(outcome().message, "operator.lua:2: stopped");
}

TEST_F(Script, StopEndsAScriptThatCatchesEveryError)
{
    station::OperatorScript &script = start(sign() + "while true do pcall(operator.sleep, 3600) end");
    ASSERT_TRUE(begun());
    script.stop();
    EXPECT_FALSE(outcome().ok);
}

TEST_F(Script, DestructionEndsItWithoutACall)
{
    bool called = false;
    {
        write("endless.lua", (sign() + "operator.sleep(3600)").toUtf8());
        station::OperatorScript script(path("endless.lua"), station::OperatorStage{&window, root, &context},
                                       [&](const station::OperatorScript::End &) { called = true; });
        script.start();
        ASSERT_TRUE(begun());
    }
    bool served = false;
    platform::MainQueue::async([&] { served = true; });
    ASSERT_TRUE(testsupport::waitUntil([&] { return served; }));
    EXPECT_FALSE(called);
}

TEST_F(Script, MayBeLetGoOfByItsOwnCallback)
{
    write("short.lua", "operator.sleep(0)");
    std::unique_ptr<station::OperatorScript> script;
    int calls = 0;
    script = std::make_unique<station::OperatorScript>(path("short.lua"),
                                                       station::OperatorStage{&window, root, &context},
                                                       [&](const station::OperatorScript::End &end) {
                                                           calls += end.ok ? 1 : 0;
                                                           script.reset();
                                                       });
    script->start();
    ASSERT_TRUE(testsupport::waitUntil([&] { return script == nullptr; }));
    EXPECT_EQ(calls, 1);
}

TEST_F(Script, FailsWhenThePluginsViewIsGone)
{
    delete root;
    EXPECT_EQ(fails("operator.waitForPanel('G1', 5)"), "operator.lua:1: the plug-in's view is gone");
}
