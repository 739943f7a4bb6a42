#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSharedTable.h"

struct lua_State;

// Between Lua's values and those that sequences share. Private to the sequencer. Thread: the state's.

/// The Lua value at a stack index as a key. Errors: throws KVKLuaSharedTableError, with `path` in its text,
/// for anything but a text and a whole number. Never raises a Lua error.
[[nodiscard]] KVKLuaSharedKey KVKLuaToSharedKey(lua_State *state, int index, const QString &path);

/// A copy of the Lua value at a stack index; nil is null. Metatables are not looked at. The stack is left as
/// it was.
///
/// `path` names the value in errors ("shared.limits"). Errors: throws KVKLuaSharedTableError for functions,
/// userdata, threads, other keys than texts and whole numbers, tables that contain themselves, are nested
/// more than 64 deep, or hold more than the table has room for. Never raises a Lua error.
[[nodiscard]] KVKLuaSharedTable::Value KVKLuaToShared(lua_State *state, int index, const QString &path);

/// Pushes a copy of the value; null is nil. Errors: throws KVKLuaSharedTableError, and leaves the stack as it
/// was, when the state has no memory for it. Never raises a Lua error.
void KVKLuaPushShared(lua_State *state, const KVKLuaSharedValue *value);

/// Pushes a table with all entries. Errors: as above.
void KVKLuaPushShared(lua_State *state, const KVKLuaSharedTable::Entries &entries);
