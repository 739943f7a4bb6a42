#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

struct lua_State;

// Lua reports errors by a jump that runs no destructors, and knows nothing of C++ exceptions. What stands
// here keeps the two apart, for whoever writes functions for a script. Thread: the state's.

/// What Lua says when there is no memory.
inline constexpr char KVKLuaNoMemory[] = "not enough memory";

/// Runs a C function, which finds `data` as its only argument (lua_touserdata), in a protected call, and
/// leaves its results on the stack. Where it raises an error, the error object is left there and false is
/// returned.
///
/// Requires: the function makes no C++ object that has a destructor, and throws nothing.
[[nodiscard]] bool KVKLuaProtected(lua_State *state, int (*function)(lua_State *), void *data, int results);

/// The error object on the top of the stack as a text, with what its `__tostring` makes of it. One that
/// cannot be made a text is named by its type. Long ones are cut. The stack stays as it is. Never raises a
/// Lua error.
[[nodiscard]] QString KVKLuaTextOnTop(lua_State *state);

/// What an exception of any type has to say.
[[nodiscard]] QString KVKTextOfException(const std::exception_ptr &problem);

/// The body of a function for scripts: reads its arguments, pushes its results, and returns their number. It
/// may throw anything, and calls nothing of Lua that raises an error.
using KVKLuaBody = int (*)(lua_State *state);

/// Runs a body as the whole of a C function that Lua calls: an exception of any type becomes a Lua error with
/// file and line of the calling script. Requires: a state of a KVKLuaRunner.
int KVKLuaPerform(lua_State *state, KVKLuaBody body);

/// A body as a function that can be given to a state.
template <KVKLuaBody body>
int KVKLuaFunction(lua_State *state)
{
    return KVKLuaPerform(state, body);
}
