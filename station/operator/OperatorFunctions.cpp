#include "station/operator/OperatorFunctions.h"

#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "kovan/KovanLuaSequencer/KVKLuaValue.h"
#include "station/operator/LuaArguments.h"
#include "station/operator/OperatorActions.h"
#include "station/operator/OperatorFailure.h"
#include "station/operator/OperatorLua.h"

#include <lua.hpp>

namespace station {
namespace {

constexpr qint64 DefaultLogCount = 100;
constexpr qint64 LargestExtent = 16384;

int waitForPanel(lua_State *state)
{
    const LuaArguments arguments(state, "operator.waitForPanel");
    actionsOf(state).waitForPanel(arguments.text(1, "key"), arguments.number(2, "seconds"));
    return 0;
}

int waitForPanelGone(lua_State *state)
{
    const LuaArguments arguments(state, "operator.waitForPanelGone");
    actionsOf(state).waitForPanelGone(arguments.text(1, "key"), arguments.number(2, "seconds"));
    return 0;
}

int type(lua_State *state)
{
    actionsOf(state).type(LuaArguments(state, "operator.type").text(1, "text"));
    return 0;
}

int scan(lua_State *state)
{
    actionsOf(state).scan(LuaArguments(state, "operator.scan").text(1, "text"));
    return 0;
}

int click(lua_State *state)
{
    actionsOf(state).click(LuaArguments(state, "operator.click").target(1));
    return 0;
}

int enter(lua_State *state)
{
    const LuaArguments arguments(state, "operator.enter");
    actionsOf(state).enter(arguments.target(1), arguments.optionalText(2, "text"));
    return 0;
}

int fill(lua_State *state)
{
    const LuaArguments arguments(state, "operator.fill");
    actionsOf(state).fill(arguments.target(1), arguments.text(2, "text"));
    return 0;
}

int paste(lua_State *state)
{
    const LuaArguments arguments(state, "operator.paste");
    actionsOf(state).paste(arguments.target(1), arguments.text(2, "text"));
    return 0;
}

int logIn(lua_State *state)
{
    actionsOf(state).logIn(LuaArguments(state, "operator.logIn").integer(1, "number"));
    return 0;
}

int waitForText(lua_State *state)
{
    const LuaArguments arguments(state, "operator.waitForText");
    actionsOf(state).waitForText(arguments.text(1, "identifier"), arguments.text(2, "text"),
                                 arguments.number(3, "seconds"));
    return 0;
}

int run(lua_State *state)
{
    actionsOf(state).run();
    return 0;
}

int stop(lua_State *state)
{
    actionsOf(state).stopRun();
    return 0;
}

int waitForRunEnd(lua_State *state)
{
    const LuaArguments arguments(state, "operator.waitForRunEnd");
    actionsOf(state).waitForRunEnd(arguments.number(1, "seconds"));
    return 0;
}

int tree(lua_State *state)
{
    const auto identifier = LuaArguments(state, "operator.tree").optionalText(1, "identifier");
    KVKLuaPush(state, actionsOf(state).tree(identifier));
    return 1;
}

int property(lua_State *state)
{
    KVKLuaPush(state, actionsOf(state).property(LuaArguments(state, "operator.property").text(1, "name")));
    return 1;
}

int log(lua_State *state)
{
    const qint64 count = LuaArguments(state, "operator.log").integer(1, "count", DefaultLogCount);
    platform::Array lines;
    for (const QString &line : actionsOf(state).log(count))
        lines.append(line);
    KVKLuaPush(state, lines);
    return 1;
}

int screenshot(lua_State *state)
{
    const LuaArguments arguments(state, "operator.screenshot");
    actionsOf(state).screenshot(arguments.text(1, "path"), arguments.optionalText(2, "identifier"));
    return 0;
}

int extent(const LuaArguments &arguments, int position, const char *name)
{
    const qint64 value = arguments.integer(position, name);
    if (value < 1 || value > LargestExtent) {
        throw OperatorFailure(
            QStringLiteral("operator.resize: %1 must be from 1 to %2, not %3")
                .arg(QString::fromLatin1(name), QString::number(LargestExtent), QString::number(value)));
    }
    return static_cast<int>(value);
}

int resize(lua_State *state)
{
    const LuaArguments arguments(state, "operator.resize");
    const QSize size =
        actionsOf(state).resize({extent(arguments, 1, "width"), extent(arguments, 2, "height")});
    lua_pushinteger(state, size.width());
    lua_pushinteger(state, size.height());
    return 2;
}

int sleep(lua_State *state)
{
    actionsOf(state).sleep(LuaArguments(state, "operator.sleep").number(1, "seconds"));
    return 0;
}

int expect(lua_State *state)
{
    const LuaArguments arguments(state, "expect");
    if (!arguments.truth(1))
        throw OperatorFailure(
            arguments.optionalText(2, "text").value_or(QStringLiteral("expectation failed")));
    return 0;
}

constexpr luaL_Reg Functions[] = {
    {"waitForPanel", KVKLuaFunction<waitForPanel>},
    {"waitForPanelGone", KVKLuaFunction<waitForPanelGone>},
    {"type", KVKLuaFunction<type>},
    {"scan", KVKLuaFunction<scan>},
    {"click", KVKLuaFunction<click>},
    {"enter", KVKLuaFunction<enter>},
    {"fill", KVKLuaFunction<fill>},
    {"paste", KVKLuaFunction<paste>},
    {"logIn", KVKLuaFunction<logIn>},
    {"waitForText", KVKLuaFunction<waitForText>},
    {"run", KVKLuaFunction<run>},
    {"stop", KVKLuaFunction<stop>},
    {"waitForRunEnd", KVKLuaFunction<waitForRunEnd>},
    {"tree", KVKLuaFunction<tree>},
    {"property", KVKLuaFunction<property>},
    {"log", KVKLuaFunction<log>},
    {"screenshot", KVKLuaFunction<screenshot>},
    {"resize", KVKLuaFunction<resize>},
    {"sleep", KVKLuaFunction<sleep>},
    {nullptr, nullptr},
};

} // namespace

void registerOperatorFunctions(lua_State *state)
{
    lua_newtable(state);
    luaL_setfuncs(state, Functions, 0);
    lua_setglobal(state, "operator");
    lua_pushcfunction(state, KVKLuaFunction<expect>);
    lua_setglobal(state, "expect");
}

} // namespace station
