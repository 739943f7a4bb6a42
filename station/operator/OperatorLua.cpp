#include "station/operator/OperatorLua.h"

#include "station/operator/OperatorActions.h"
#include "station/operator/OperatorFunctions.h"

#include <QFile>
#include <QFileInfo>

#include <lua.hpp>

#include <memory>

namespace station {
namespace {

constexpr int InstructionsBetweenLooks = 1000;

struct CloseState
{
    void operator()(lua_State *state) const { lua_close(state); }
};
using State = std::unique_ptr<lua_State, CloseState>;

/// Ends a script that computes for ever. Once stopped it looks at every instruction, so that a script which
/// catches the error does not get far.
void endWhenStopped(lua_State *state, lua_Debug *)
{
    if (!actionsOf(state).isStopped())
        return;
    lua_sethook(state, endWhenStopped, LUA_MASKCOUNT, 1);
    luaL_where(state, 0);
    lua_pushliteral(state, "stopped");
    lua_concat(state, 2);
    lua_error(state);
}

void findModulesBeside(lua_State *state, const QString &path)
{
    const QByteArray pattern = QFile::encodeName(QFileInfo(path).absolutePath() + QLatin1String("/?.lua;"));
    lua_getglobal(state, "package");
    lua_pushlstring(state, pattern.constData(), static_cast<std::size_t>(pattern.size()));
    lua_getfield(state, -2, "path");
    lua_concat(state, 2);
    lua_setfield(state, -2, "path");
    lua_pop(state, 1);
}

State makeState(const QString &path, OperatorActions &actions)
{
    State state(luaL_newstate());
    if (!state)
        return state;
    // The extra space is copied into every coroutine, where the functions find it too.
    *static_cast<OperatorActions **>(lua_getextraspace(state.get())) = &actions;
    luaL_openlibs(state.get());
    registerOperatorFunctions(state.get());
    findModulesBeside(state.get(), path);
    lua_sethook(state.get(), endWhenStopped, LUA_MASKCOUNT, InstructionsBetweenLooks);
    return state;
}

QString errorText(lua_State *state)
{
    std::size_t length = 0;
    const char *text = luaL_tolstring(state, -1, &length);
    return QString::fromUtf8(text, static_cast<qsizetype>(length));
}

} // namespace

OperatorActions &actionsOf(lua_State *state)
{
    return **static_cast<OperatorActions **>(lua_getextraspace(state));
}

std::optional<QString> runOperatorScript(const QString &path, OperatorActions &actions)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    const QByteArray source = file.readAll();
    const QByteArray name = '@' + QFileInfo(path).fileName().toUtf8();
    const State state = makeState(path, actions);
    if (!state)
        return QStringLiteral("%1: no memory for the script").arg(path);
    const bool ok = luaL_loadbufferx(state.get(), source.constData(), static_cast<std::size_t>(source.size()),
                                     name.constData(), "t") == LUA_OK &&
                    lua_pcall(state.get(), 0, 0, 0) == LUA_OK;
    if (ok)
        return std::nullopt;
    return errorText(state.get());
}

} // namespace station
