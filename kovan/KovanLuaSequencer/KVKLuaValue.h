#pragma once

#include "platform/Value.h"

#include <functional>
#include <stdexcept>

struct lua_State;

/// A Lua value that has no counterpart among the values of the platform. The text names where it stands.
class KVKLuaValueError : public std::runtime_error
{
public:
    /// A zero in the text, where what() would end, is made visible.
    explicit KVKLuaValueError(const QString &text)
        : std::runtime_error(QString(text).replace(QChar(0), QChar(0x2400)).toStdString())
    {}
};

/// Reads the Lua value at a stack index: nil, boolean, integer, number, text (UTF-8), a table with the keys 1
/// to n or an empty one as an array, any other table as a dictionary (number keys in decimal digits).
///
/// `path` names the value in errors ("config"). The stack is left as it was.
/// Errors: throws KVKLuaValueError for functions, userdata, threads, text that is not UTF-8, keys that are
/// neither text nor number, a key that is there as number and as text, tables that contain themselves or are
/// nested more than 64 deep. Never raises a Lua error. Thread: the state's.
[[nodiscard]] platform::Value KVKLuaToValue(lua_State *state, int index, const QString &path);

/// The same for a table that is to be a dictionary: an empty one is an empty dictionary, one with the keys 1
/// to n has these as its keys. Requires: the value is a table.
///
/// `taken` is asked what becomes of a function that is the direct value of a key: nothing refuses it as
/// elsewhere. It finds the function on the top of the stack, leaves the stack as it is and raises no Lua
/// error.
using KVKLuaTakeFunction = std::function<platform::Value(const QString &key, const QString &path)>;
[[nodiscard]] platform::Dictionary KVKLuaToDictionary(lua_State *state, int index, const QString &path,
                                                      const KVKLuaTakeFunction &taken = {});

/// Pushes a value; nothing is nil. Integers, numbers, booleans and texts stay what they are.
///
/// Errors: throws KVKLuaValueError, and leaves the stack as it was, when the value is nested more than 200
/// deep or the state has no memory for it. Never raises a Lua error. Thread: the state's.
void KVKLuaPush(lua_State *state, const platform::Value &value);
