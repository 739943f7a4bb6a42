#pragma once

#include <cstddef>

struct lua_State;
struct KVKLuaLibrarySettings;

/// Lets a script load Lua as text alone: by load, loadfile, dofile and require. Bytecode can do what no text
/// can, down to the memory of the process, and is told by the name of its file. Modules lie beside the script
/// or on package.path; those in C are found where package.loadlib is allowed. Private to the sequencer.
///
/// Thread: the state's, with Lua's libraries. Errors: raises Lua errors; called in a protected call.
void KVKLuaLoadTextOnly(lua_State *state, const KVKLuaLibrarySettings &settings);

/// Loads text as luaL_loadbufferx does, and gives bytecode an error that names the chunk.
[[nodiscard]] int KVKLuaLoadText(lua_State *state, const char *text, std::size_t length, const char *chunk);

/// Whether the value at an index is a function that reads a file and none without its name. Raises nothing.
[[nodiscard]] bool KVKLuaReadsNamedFile(lua_State *state, int index);
