#pragma once

#include <cstddef>

struct lua_State;
class KVKLuaScope;

/// Something that a script has for as long as a function runs, and gives up however that ends. An object of
/// Lua, and therefore without a destructor. Private to the sequencer.
///
/// Thread: the state's.
struct KVKLuaHold
{
    using GiveUp = void (*)(KVKLuaScope &scope, const KVKLuaHold &hold) noexcept;

    GiveUp giveUp;
    bool isHeld;      ///< Set by who takes it, in the moment of taking.
    const char *text; ///< Its name; null where that is a whole number.
    std::size_t length;
    long long number;
};

/// Makes what KVKLuaPushHold needs, in a new state. Errors: raises Lua errors.
void KVKLuaPrepareHolds(lua_State *state);

/// Puts a hold that is not yet held onto the stack at `place`, below what stands there, and returns it. Its
/// name is the text or whole number at `name`. Errors: raises Lua errors.
KVKLuaHold *KVKLuaInsertHold(lua_State *state, int place, int name, KVKLuaHold::GiveUp giveUp);

/// Calls the function that stands right above the hold with the arguments above it, and leaves as many
/// results there as are wanted. Gives up the hold when the function raises an error, which goes on as it was;
/// else the hold is given up when the caller returns, or calls KVKLuaGiveUp. Errors: raises Lua errors.
void KVKLuaCallHolding(lua_State *state, int place, int results);

/// Gives up what is held. Nothing happens when it is not.
void KVKLuaGiveUp(lua_State *state, KVKLuaHold *hold);
