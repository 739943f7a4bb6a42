#include "kovan/KovanLuaSequencer/KVKLuaRunner.h"

#include "kovan/KovanLuaSequencer/KVKLuaLibraries.h"
#include "kovan/KovanLuaSequencer/KVKLuaLoading.h"
#include "kovan/KovanLuaSequencer/KVKLuaMemory.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <lua.hpp>

#include <memory>
#include <new>
#include <utility>

namespace {

/// Often enough that nobody notices the delay, seldom enough that nobody notices the look.
constexpr int InstructionsBetweenLooks = 1000;
struct StateCloser
{
    void operator()(lua_State *state) const { lua_close(state); }
};
using State = std::unique_ptr<lua_State, StateCloser>;

/// Ends the script once it is stopped. From then on every instruction is looked at, so that a script that
/// catches the error does not get far.
void endWhenStopped(lua_State *state, lua_Debug *)
{
    if (!KVKLuaRunner::of(state).isStopped())
        return;
    lua_sethook(state, endWhenStopped, LUA_MASKCOUNT, 1);
    luaL_where(state, 0);
    lua_pushliteral(state, "stopped");
    lua_concat(state, 2);
    lua_error(state);
}

/// Below this function and the handler of the error, which the script did not call.
int pushTraceback(lua_State *state)
{
    constexpr int FirstCall = 2;
    luaL_traceback(state, state, nullptr, FirstCall);
    return 1;
}

KVKLuaRunner::End failure(const QString &message)
{
    return {false, {}, message};
}

KVKLuaRunner::End endWithValueOnTop(lua_State *state)
{
    try {
        return {true, KVKLuaToValue(state, -1, QStringLiteral("the result")), {}};
    } catch (const KVKLuaValueError &problem) {
        return failure(QString::fromUtf8(problem.what()));
    }
}

} // namespace

/// The script as it was read, in the bytes that Lua takes.
struct KVKLuaRunner::Source
{
    KVKLuaRunner *runner;
    QByteArray text;
    QByteArray chunk;
    QByteArray folder;
};

KVKLuaRunner::KVKLuaRunner(const Kind &kind, KVKLuaLimits limits)
    : m_kind(kind)
    , m_limits(std::move(limits))
{}

KVKLuaRunner::~KVKLuaRunner() = default;

KVKLuaRunner &KVKLuaRunner::of(lua_State *state)
{
    return **static_cast<KVKLuaRunner **>(lua_getextraspace(state));
}

void KVKLuaRunner::look(lua_State *state)
{
    // Not ended in here, so that the call that was made still has its end and its result.
    if (of(state).isStopped())
        lua_sethook(state, endWhenStopped, LUA_MASKCOUNT, 1);
}

KVKLuaRunner::End KVKLuaRunner::run(const QString &path) noexcept
{
    try {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return failure(QStringLiteral("%1: %2").arg(path, file.errorString()));
        const QFileInfo place(path);
        return runSource(
            {this, file.readAll(), '@' + place.fileName().toUtf8(), QFile::encodeName(place.absolutePath())});
    } catch (...) {
        return failure(KVKTextOfException(std::current_exception()));
    }
}

KVKLuaRunner::End KVKLuaRunner::runSource(Source source)
{
    KVKLuaMemory memory(m_limits.memory);
    const State state(lua_newstate(&KVKLuaMemory::allocate, &memory));
    if (!state)
        return failure(QStringLiteral("no memory for the script"));
    // The extra space is copied into every coroutine, where the functions find it too.
    *static_cast<KVKLuaRunner **>(lua_getextraspace(state.get())) = this;
    m_traceback.clear();
    memory.watch(state.get());
    if (!KVKLuaProtected(state.get(), runProtected, &source, 1)) {
        const QString message = KVKLuaTextOnTop(state.get());
        const bool isPlaceless = message == QLatin1String(KVKLuaNoMemory);
        return {false, {}, isPlaceless ? memory.lastRefusal() + message : message, m_traceback};
    }
    return m_kind.givesAResult ? endWithValueOnTop(state.get()) : End{true, {}, {}};
}

int KVKLuaRunner::runProtected(lua_State *state)
{
    const Source &source = *static_cast<const Source *>(lua_touserdata(state, 1));
    KVKLuaOpenLibraries(state,
                        {source.runner->m_kind.name, source.folder.constData(), source.runner->m_limits});
    source.runner->bind(state);
    lua_sethook(state, endWhenStopped, LUA_MASKCOUNT, InstructionsBetweenLooks);
    if (KVKLuaLoadText(state, source.text.constData(), static_cast<std::size_t>(source.text.size()),
                       source.chunk.constData()) != LUA_OK)
        return lua_error(state);
    // In a call of its own: only here are the calls still known that led to an error which nobody has caught.
    lua_pushcfunction(state, noteTraceback);
    lua_insert(state, -2);
    if (lua_pcall(state, 0, 1, -2) != LUA_OK)
        return lua_error(state);
    return 1;
}

/// Handles the error of a script, which stays the object that it is.
int KVKLuaRunner::noteTraceback(lua_State *state)
{
    // Protected: an endless recursion or a script that has all memory leaves little room.
    if (KVKLuaProtected(state, pushTraceback, nullptr, 1))
        of(state).keepTraceback(state);
    lua_settop(state, 1);
    return 1;
}

/// Keeps the text on the top. Throws nothing: Lua has called for it.
void KVKLuaRunner::keepTraceback(lua_State *state) noexcept
{
    try {
        QStringList lines = KVKLuaTextOnTop(state).split(QLatin1Char('\n'));
        // The last call is the runner's own.
        while (!lines.isEmpty() && lines.last().trimmed() == QLatin1String("[C]: in ?"))
            lines.removeLast();
        m_traceback = lines.size() > 1 ? lines.join(QLatin1Char('\n')) : QString();
    } catch (const std::bad_alloc &) {
        m_traceback = QString();
    }
}
