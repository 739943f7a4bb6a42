#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include "kovan/KovanLuaSequencer/KVKLuaBindings.h"
#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <QFile>
#include <QFileInfo>

#include <lua.hpp>

#include <atomic>
#include <thread>
#include <utility>

struct KVKLuaSequence::Run
{
    Run(Description given, KVKLuaSequenceObserver &told)
        : description(std::move(given))
        , observer(told)
        , scope(description.functions, observer)
    {}

    Description description;
    KVKLuaSequenceObserver &observer;
    KVKLuaScope scope;
    std::atomic<bool> ended{false};
    std::thread thread;
};

namespace {

struct StateCloser
{
    void operator()(lua_State *state) const { lua_close(state); }
};
using State = std::unique_ptr<lua_State, StateCloser>;

QString textOnTop(lua_State *state)
{
    std::size_t length = 0;
    const char *bytes = luaL_tolstring(state, -1, &length);
    const QString text = QString::fromUtf8(bytes, static_cast<qsizetype>(length));
    lua_pop(state, 1);
    return text;
}

/// Loads the script as a function on the stack, or an error text; scripts are text, never precompiled.
bool load(lua_State *state, const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        const QByteArray why = QStringLiteral("%1: %2").arg(path, file.errorString()).toUtf8();
        lua_pushlstring(state, why.constData(), static_cast<std::size_t>(why.size()));
        return false;
    }
    const QByteArray source = file.readAll();
    const QByteArray chunk = '@' + QFileInfo(path).fileName().toUtf8();
    return luaL_loadbufferx(state, source.constData(), static_cast<std::size_t>(source.size()),
                            chunk.constData(), "t") == LUA_OK;
}

void setGlobals(lua_State *state, const platform::Dictionary &globals)
{
    for (auto global = globals.cbegin(); global != globals.cend(); ++global) {
        KVKLuaPush(state, global.value());
        lua_setglobal(state, global.key().toUtf8().constData());
    }
}

/// Lets a script `require` the files that lie beside it.
void findModulesBeside(lua_State *state, const QString &path)
{
    const QByteArray pattern = QFile::encodeName(QFileInfo(path).absolutePath()) + "/?.lua;";
    lua_getglobal(state, "package");
    lua_getfield(state, -1, "path");
    const QByteArray all = pattern + lua_tostring(state, -1);
    lua_pop(state, 1);
    lua_pushlstring(state, all.constData(), static_cast<std::size_t>(all.size()));
    lua_setfield(state, -2, "path");
    lua_pop(state, 1);
}

KVKLuaEnd endOf(lua_State *state)
{
    KVKLuaEnd end;
    try {
        end.value = KVKLuaToValue(state, -1, QStringLiteral("the result"));
    } catch (const KVKLuaValueError &problem) {
        end.outcome = KVKLuaOutcome::Erred;
        end.message = QString::fromUtf8(problem.what());
        return end;
    }
    const bool failed = end.value.metaType() == QMetaType::fromType<bool>() && !end.value.toBool();
    end.outcome = failed ? KVKLuaOutcome::Failed : KVKLuaOutcome::Passed;
    return end;
}

KVKLuaEnd run(const KVKLuaSequence::Description &description, KVKLuaScope &scope)
{
    const State state(luaL_newstate());
    if (!state)
        return {KVKLuaOutcome::Erred, {}, QStringLiteral("no memory for the sequence")};
    luaL_openlibs(state.get());
    KVKLuaBind(state.get(), scope);
    setGlobals(state.get(), description.globals);
    findModulesBeside(state.get(), description.scriptPath);
    const bool ok = load(state.get(), description.scriptPath) && lua_pcall(state.get(), 0, 1, 0) == LUA_OK;
    if (scope.isStopped())
        return {KVKLuaOutcome::Stopped, {}, QStringLiteral("stopped")};
    return ok ? endOf(state.get()) : KVKLuaEnd{KVKLuaOutcome::Erred, {}, textOnTop(state.get())};
}

} // namespace

KVKLuaSequence::KVKLuaSequence(Description description, KVKLuaSequenceObserver &observer)
    : m_run(std::make_shared<Run>(std::move(description), observer))
{}

KVKLuaSequence::~KVKLuaSequence()
{
    requestStop();
    if (m_run->thread.joinable())
        m_run->thread.join();
}

void KVKLuaSequence::start()
{
    m_run->thread = std::thread([shared = m_run] {
        shared->observer.sequenceEnded(run(shared->description, shared->scope));
        shared->ended = true;
    });
}

void KVKLuaSequence::requestStop()
{
    m_run->scope.stop();
}

bool KVKLuaSequence::hasEnded() const
{
    return m_run->ended;
}
