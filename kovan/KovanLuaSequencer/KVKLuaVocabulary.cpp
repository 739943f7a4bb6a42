#include "kovan/KovanLuaSequencer/KVKLuaVocabulary.h"

#include "kovan/KovanLuaSequencer/KVKLuaLibraries.h"
#include "kovan/KovanLuaSequencer/KVKLuaLoading.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"

#include <QRegularExpression>

#include <lua.hpp>

#include <memory>
#include <stdexcept>
#include <utility>

namespace {

struct StateCloser
{
    void operator()(lua_State *state) const { lua_close(state); }
};
using State = std::unique_ptr<lua_State, StateCloser>;

State newState()
{
    State state(luaL_newstate());
    if (!state)
        throw std::runtime_error("no memory for a state of Lua");
    return state;
}

/// Gives a protected state something, and raises what goes wrong as an exception.
void giveProtected(lua_State *state, void (*give)(lua_State *))
{
    const auto body = [](lua_State *inner) {
        (*static_cast<void (**)(lua_State *)>(lua_touserdata(inner, 1)))(inner);
        return 0;
    };
    if (!KVKLuaProtected(state, body, static_cast<void *>(&give), 0))
        throw std::runtime_error(KVKLuaTextOnTop(state).toStdString());
}

int openLibraries(lua_State *state)
{
    KVKLuaOpenLibraries(state, {"a script", ".", *static_cast<KVKLuaLimits *>(lua_touserdata(state, 1))});
    return 0;
}

/// The text keys of the table on the top. Nothing here allocates in Lua.
QStringList keysOnTop(lua_State *state)
{
    QStringList keys;
    lua_pushnil(state);
    while (lua_next(state, -2) != 0) {
        lua_pop(state, 1);
        if (lua_type(state, -1) == LUA_TSTRING)
            keys.append(QString::fromUtf8(lua_tostring(state, -1)));
    }
    keys.sort();
    return keys;
}

/// The names and fields of the table of globals on the top.
KVKLuaVocabulary namesOnTop(lua_State *state)
{
    KVKLuaVocabulary vocabulary;
    vocabulary.names = keysOnTop(state);
    lua_pushnil(state);
    while (lua_next(state, -2) != 0) {
        const bool isNamed = lua_type(state, -2) == LUA_TSTRING;
        const QString name = isNamed ? QString::fromUtf8(lua_tostring(state, -2)) : QString();
        if (isNamed && lua_istable(state, -1) && name != QLatin1String("_G"))
            vocabulary.fields.insert(name, keysOnTop(state));
        lua_pop(state, 1);
    }
    return vocabulary;
}

/// Notes a function on the top that is refused.
void noteRefusal(lua_State *state, const QString &name, KVKLuaVocabulary &vocabulary)
{
    if (KVKLuaIsRefused(state, -1))
        vocabulary.refused.append(name);
    if (const char *allowance = KVKLuaAllowanceOf(state, -1))
        vocabulary.allowances.insert(name, QString::fromUtf8(allowance));
    if (KVKLuaIsRefusedWithoutArguments(state, -1))
        vocabulary.refusedWithoutArguments.append(name);
}

/// Adds "os.execute" and the like, which the table of globals on the top has.
void addRefused(lua_State *state, KVKLuaVocabulary &vocabulary)
{
    for (const QString &name : std::as_const(vocabulary.names)) {
        lua_getfield(state, -1, name.toUtf8().constData());
        noteRefusal(state, name, vocabulary);
        const QStringList fields = vocabulary.fields.value(name);
        for (const QString &field : fields) {
            lua_getfield(state, -1, field.toUtf8().constData());
            noteRefusal(state, name + QLatin1Char('.') + field, vocabulary);
            lua_pop(state, 1);
        }
        lua_pop(state, 1);
    }
}

/// What the load of a script needs, in the bytes that Lua takes.
int loadScript(lua_State *state)
{
    const QByteArray &script = *static_cast<const QByteArray *>(lua_touserdata(state, 1));
    if (KVKLuaLoadText(state, script.constData(), static_cast<std::size_t>(script.size()), "=script") !=
        LUA_OK)
        return lua_error(state);
    return 0;
}

/// Returns the path on which the module that is the first argument is found, or "loaded".
int findModule(lua_State *state)
{
    const QByteArray &name = *static_cast<const QByteArray *>(lua_touserdata(state, 1));
    luaL_openlibs(state);
    for (const char *path : {"path", "cpath"}) {
        lua_getglobal(state, "package");
        lua_getfield(state, -1, "searchpath");
        lua_pushlstring(state, name.constData(), static_cast<std::size_t>(name.size()));
        lua_getfield(state, -3, path);
        lua_call(state, 2, 1);
        lua_pushstring(state, path);
        if (lua_isstring(state, -2))
            return 1;
        lua_settop(state, 1);
    }
    lua_getglobal(state, "package");
    lua_getfield(state, -1, "loaded");
    lua_pushstring(state, "loaded");
    if (lua_getfield(state, -2, name.constData()) == LUA_TNIL)
        return 1;
    lua_pop(state, 1);
    return 1;
}

} // namespace

KVKLuaVocabulary KVKLuaLibraryVocabulary(const KVKLuaLimits &limits)
{
    const State state = newState();
    KVKLuaLimits given = limits;
    if (!KVKLuaProtected(state.get(), openLibraries, &given, 0))
        throw std::runtime_error(KVKLuaTextOnTop(state.get()).toStdString());
    lua_pushglobaltable(state.get());
    KVKLuaVocabulary vocabulary = namesOnTop(state.get());
    addRefused(state.get(), vocabulary);
    vocabulary.refusedMethodsOfInput = {QStringLiteral("read"), QStringLiteral("lines")};
    return vocabulary;
}

KVKLuaVocabulary KVKLuaVocabularyOf(void (*give)(lua_State *state))
{
    const State state = newState();
    giveProtected(state.get(), give);
    lua_pushglobaltable(state.get());
    return namesOnTop(state.get());
}

std::optional<KVKLuaSyntaxProblem> KVKLuaSyntaxProblemOf(const QByteArray &script)
{
    const State state = newState();
    QByteArray text = script;
    if (KVKLuaProtected(state.get(), loadScript, &text, 0))
        return std::nullopt;
    const QString problem = KVKLuaTextOnTop(state.get());
    static const QRegularExpression form(QStringLiteral("^script:(\\d+): (.*)$"),
                                         QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(problem);
    if (match.hasMatch())
        return KVKLuaSyntaxProblem{match.captured(1).toInt(), match.captured(2)};
    return KVKLuaSyntaxProblem{1, QString(problem).remove(QStringLiteral("script: "))};
}

KVKLuaModule KVKLuaFindModule(const QByteArray &name)
{
    const State state = newState();
    QByteArray text = name;
    if (!KVKLuaProtected(state.get(), findModule, &text, 1) || lua_isnil(state.get(), -1))
        return KVKLuaModule::Nowhere;
    return qstrcmp(lua_tostring(state.get(), -1), "cpath") == 0 ? KVKLuaModule::C : KVKLuaModule::Lua;
}
