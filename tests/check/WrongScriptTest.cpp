#include "tests/check/CheckFixture.h"

#include <ostream>

namespace {

struct WrongScript
{
    const char *name;
    const char *lua;
    QStringList lines;
    const char *per = "system";
};

void PrintTo(const WrongScript &script, std::ostream *stream)
{
    *stream << script.name;
}

class WrongScripts : public testsupport::CheckTest, public ::testing::WithParamInterface<WrongScript>
{};

TEST_P(WrongScripts, AreToldLineByLine)
{
    EXPECT_EQ(linesOf({station(GetParam().lua, GetParam().per)}), GetParam().lines);
}

std::string nameOf(const ::testing::TestParamInfo<WrongScript> &info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Syntax, WrongScripts,
    ::testing::Values(
        WrongScript{"NoLua", "local x = 1\nlocal y = = 2\n", {"sequence.lua:2: unexpected symbol near '='"}},
        WrongScript{"Unfinished",
                    "if true then\n",
                    {"sequence.lua:2: 'end' expected (to close 'if' at line 1) near <eof>"}},
        WrongScript{"Bytecode", "\x1bLua", {"sequence.lua:1: bytecode is not loaded, only Lua as text"}},
        WrongScript{"Empty", "", {}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Calls, WrongScripts,
    ::testing::Values(
        WrongScript{"UnknownKey",
                    "showView(systemIndex, { buton = { \"OK\" } })",
                    {"sequence.lua:1:25: showView: key 'buton' is not known; it is not used. Did you mean "
                     "'button'?"}},
        WrongScript{"UnknownKeyWithAnUnknownValue",
                    "showView(systemIndex, { mesage = tostring(1) })",
                    {"sequence.lua:1:25: showView: key 'mesage' is not known; it is not used. Did you mean "
                     "'message'?"}},
        WrongScript{"KeyThroughALocal",
                    "local cfg = {\n  input = { \"SN\" },\n  lenght = 3,\n}\nshowView(systemIndex, cfg)",
                    {"sequence.lua:3:3: showView: key 'lenght' is not known; it is not used. Did you mean "
                     "'length'?"}},
        WrongScript{
            "RefusedConstant",
            "showView(systemIndex, { input = { \"SN\" }, pattern = \"(\" })",
            {"sequence.lua:1:43: showView: Invalid config. Value for key 'pattern' is (: not a regular "
             "expression: missing closing parenthesis, at character 2 of '('."}},
        WrongScript{
            "EachRefusedKey",
            "showView(systemIndex, {\n  input = { \"SN\" },\n  hint = 3,\n  timeLimit = -1,\n})",
            {"sequence.lua:3:3: showView: Invalid config. Value for key 'hint' is 3: must be a text.",
             "sequence.lua:4:3: showView: Invalid config. Value for key 'timeLimit' is -1: must be a number "
             "of seconds, more than 0 and at most 1000000."}},
        WrongScript{"UnknownSlot",
                    "showGroupView(0, { input = { \"S1\", \"S9\" } })",
                    {"sequence.lua:1:20: showGroupView: Invalid config. Slot labels for showGroupView() must "
                     "be slot name."}},
        WrongScript{"LabelsAndColumn",
                    "showGroupView(0, { input = { \"S9\" }, column = 3 })",
                    {"sequence.lua:1:20: showGroupView: Invalid config. Slot labels for showGroupView() must "
                     "be slot name.",
                     "sequence.lua:1:38: showGroupView: Invalid config. Input column exceeds slot number."}},
        WrongScript{"NoSuchSystem",
                    "showView(4, {})\nlocal n <const> = 3\nshowView(n, {})",
                    {"sequence.lua:1:10: showView: system index 4 is beyond the station's systems (0 to 3)"}},
        WrongScript{
            "NoSuchGroup",
            "showGroupView(2, {})\nisLoopFinished(-1)\ngetData(1.5)",
            {"sequence.lua:1:15: showGroupView: group number 2 is out of range, there are 2 (0 to 1)",
             "sequence.lua:2:16: isLoopFinished: group number -1 is out of range, there are 2 (0 to 1)",
             "sequence.lua:3:9: getData: system index must be an integer, got 1.5"}},
        WrongScript{"TooFewArguments",
                    "showView(systemIndex)",
                    {"sequence.lua:1:1: showView: argument 2 must be a table, not no value"}},
        WrongScript{"TooManyArguments",
                    "showView(systemIndex, {}, 1)",
                    {"sequence.lua:1:27: showView: takes 2 arguments, got 3"}},
        WrongScript{"WrongTypes",
                    "showView(\"0\", \"x\" .. 1)",
                    {"sequence.lua:1:10: showView: argument 1 must be a number, not string",
                     "sequence.lua:1:15: showView: argument 2 must be a table, not string"}},
        WrongScript{
            "FunctionUnderAnotherKey",
            "showView(0, { input = { \"SN\" }, pattern = function() end })",
            {"sequence.lua:1:33: showView: argument 2.pattern is a function, which cannot be passed on"}},
        WrongScript{"Picture",
                    "showView(0, { image = \"no\" .. \".png\" })",
                    {"sequence.lua:1:15: picture 'no.png': there is no such file"}},
        WrongScript{"ByAnotherName",
                    "local ask = showView\nask(9, {})",
                    {"sequence.lua:2:5: showView: system index 9 is beyond the station's systems (0 to 3)"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Names, WrongScripts,
    ::testing::Values(
        WrongScript{
            "UnknownGlobal", "slep(1)", {"sequence.lua:1:1: 'slep' is not defined; did you mean 'sleep'?"}},
        WrongScript{"UnknownField",
                    "print(string.fromat(\"x\"))",
                    {"sequence.lua:1:14: string has no 'fromat'; did you mean 'format'?"}},
        WrongScript{"FieldThroughALocal",
                    "local s = string\ns.lowr(\"X\")",
                    {"sequence.lua:2:3: string has no 'lowr'; did you mean 'lower'?"}},
        WrongScript{"MethodOfAText",
                    "print((\"x\"):uper())",
                    {"sequence.lua:1:13: a text has no 'uper'; did you mean 'upper'?"}},
        WrongScript{
            "Refused",
            "os.exit(1)\nio.read()\nio.lines()\nio.stdin:read()",
            {"sequence.lua:1:4: os.exit is not available to a sequence; the configuration allows it with "
             "lua.allow = [\"os.exit\"]",
             "sequence.lua:2:4: io.read is not available to a sequence",
             "sequence.lua:3:4: io.lines without a file is not available to a sequence",
             "sequence.lua:4:10: io.stdin:read is not available to a sequence"}},
        WrongScript{"NotAllowed",
                    "local d = debug\nprint(d.traceback())\nd.getinfo(1)\n_G.os.execute(\"x\")\n"
                    "local run = io.popen\nreturn package.loadlib, dofile(), loadfile()",
                    {"sequence.lua:3:3: debug.getinfo is not available to a sequence; the configuration "
                     "allows it with lua.allow = [\"debug\"]",
                     "sequence.lua:4:7: os.execute is not available to a sequence; the configuration allows "
                     "it with lua.allow = [\"os.execute\"]",
                     "sequence.lua:5:16: io.popen is not available to a sequence; the configuration allows "
                     "it with lua.allow = [\"io.popen\"]",
                     "sequence.lua:6:16: package.loadlib is not available to a sequence; the configuration "
                     "allows it with lua.allow = [\"package.loadlib\"]",
                     "sequence.lua:6:25: dofile without a file is not available to a sequence",
                     "sequence.lua:6:35: loadfile without a file is not available to a sequence"}},
        WrongScript{"OfAnotherKind",
                    "print(slotName, groupName)",
                    {"sequence.lua:1:7: 'slotName' is there only in a sequence that runs per system"},
                    "group"},
        WrongScript{"OperatorsFunction",
                    "operator.scan(\"x\")",
                    {"sequence.lua:1:1: 'operator' is there only in an operator's script"}},
        WrongScript{"NoModule",
                    "local m = require(\"not_there_at_all\")",
                    {"sequence.lua:1:19: there is no module 'not_there_at_all'"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    NothingIsSaidOf, WrongScripts,
    ::testing::Values(
        WrongScript{"UnknownValues",
                    "local x = tonumber(slotName)\nshowView(x, { input = { x }, length = x, pattern = x })",
                    {}},
        WrongScript{
            "ChangedTables", "local cfg = { lenght = 1 }\ncfg.lenght = nil\nshowView(systemIndex, cfg)", {}},
        WrongScript{"TablesChangedElsewhere",
                    "local cfg = { lenght = 1 }\nlocal function fix(t) t.lenght = nil "
                    "end\nfix(cfg)\nshowView(systemIndex, cfg)",
                    {}},
        WrongScript{"ChangedThroughAnotherName",
                    "local cfg = { input = { \"SN\", \"X\" } }\nlocal list = cfg.input\nlist[2] = "
                    "nil\nshowView(systemIndex, cfg)",
                    {}},
        WrongScript{"LocalsThatAreGivenAgain",
                    "local n = 9\nif groupNumber == 0 then n = 0 end\nshowView(n, {})",
                    {}},
        WrongScript{"ArgumentsOfACall",
                    "local function both() return 0, {} end\nshowView(both())\nshowView(0, ...)",
                    {}},
        WrongScript{"KeysThatMayBe", "local k = slotName\nshowView(0, { [k] = 1, hint = \"x\" })", {}},
        WrongScript{"ADefaultAmongUnknownChoices",
                    "local c = slotName\nshowView(0, { input = { \"SN\" }, choices = { \"a\", c }, default = "
                    "\"b\" })",
                    {}},
        WrongScript{"OwnDefinitions",
                    "function helper() return limit end\nlimit = 3\nfunction string.trim(s) return s end\n"
                    "helper() string.trim(\"x\")\n_G.other = 1 print(other)",
                    {}},
        WrongScript{"OwnFunctionsOfTheSameName", "function showView() end\nshowView(1, 2, 3)", {}},
        WrongScript{"WhatRunsOtherText", "load(\"x = 1\")()\nprint(x)", {}},
        WrongScript{"LinesThatSaySo", "slep(1) -- check: ignore\n-- check: ignore\nslep(2)", {}},
        WrongScript{
            "TheRestOfLua",
            "local a <const>, b <close> = 1 // 2, nil\ngoto done\nlocal t = { 1, x = 2, [3] = 4; 5 }\n"
            "for i = 1, #t do if i ~= 2 then break end end\nfor k, v in pairs(t) do print(k, v, a, b) end\n"
            "repeat local z = 1 until z\nwhile false do end\n"
            "print(\"\\u{48}\\z\n   \\x41\\065\" .. [==[\n]]]==] .. 0x1p4 .. 1e3 .. ~1 | 2 & 3 << 4 ~ 7, -a "
            "^ 2)\n"
            "::done:: ;;",
            {}}),
    nameOf);

using OtherScripts = testsupport::CheckTest;

TEST_F(OtherScripts, ModulesBesideASequenceAreLookedAtWithIt)
{
    static_cast<void>(files.write("helper.lua", "function help() return limit end\nslep(1)\nreturn {}"));
    EXPECT_EQ(linesOf({station("require \"helper\"\nlimit = 3\nhelp()\nhlp()")}),
              (QStringList{"helper.lua:2:1: 'slep' is not defined; did you mean 'sleep'?",
                           "sequence.lua:4:1: 'hlp' is not defined; did you mean 'help'?"}));
}

TEST_F(OtherScripts, AnOperatorsScriptIsKnownByWhatItUses)
{
    const QString config = station("return true");
    const QString script = files.write(
        "operator.lua", "operator.waitForPanel(\"G3\", 1)\noperator.clik(\"x\")\nprint(systemIndex)\n"
                        "operator.click({ panel = \"3\", title = \"OK\" })");
    const QStringList lines{"operator.lua:1:23: the station has no group or system 'G3'; did you mean 'G1'?",
                            "operator.lua:2:10: operator has no 'clik'; did you mean 'click'?",
                            "operator.lua:3:7: 'systemIndex' is there only in a sequence"};
    EXPECT_EQ(linesOf({config, script}), lines);
    EXPECT_EQ(linesOf({config}, {script}), lines);
}

TEST_F(OtherScripts, OfNoKnownStationAreJudgedByWhatHoldsForEach)
{
    const QString script = files.write("a.lua", "showGroupView(70, { input = { \"X1\", \"X1\" } "
                                                "})\nshowGroupView(1, { input = { \"X1\" }, column = 5 })\n"
                                                "print(systemIndex, groupName)");
    EXPECT_EQ(
        linesOf({script}),
        QStringList{
            "a.lua:1:21: showGroupView: Invalid config. Allow up to 12 input fields and no duplications."});
}

} // namespace
