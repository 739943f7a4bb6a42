#pragma once

#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"

#include <QString>

// Why the sequencer does not make a call of a plug-in's function: for the call itself, and for whoever looks
// at a script before it runs. Thread: any.

/// More arguments than the function takes; an empty text when they are not too many.
[[nodiscard]] QString KVKProblemOfCount(const KVKBoundFunction &function, int given);
/// An argument of the wrong type, which Lua names ("string", "no value"); an empty text when it fits.
/// Positions count from 1. Requires: the function takes such an argument.
[[nodiscard]] QString KVKProblemOfType(const KVKBoundFunction &function, int position,
                                       const QString &luaType);
/// What an argument is called in messages: "showView: argument 2".
[[nodiscard]] QString KVKNameOfArgument(const KVKBoundFunction &function, int position);
/// A value that has no counterpart among those of the platform. `path` leads to it: "showView: argument 2.x".
[[nodiscard]] QString KVKProblemOfValue(const QString &path, const QString &luaType);
