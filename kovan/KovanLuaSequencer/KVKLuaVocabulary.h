#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

struct lua_State;

/// The names that a script finds, for whoever looks at one before it runs.
struct KVKLuaVocabulary
{
    QStringList names;                   ///< Globals.
    QHash<QString, QStringList> fields;  ///< Of those among them that are tables of known content.
    QStringList refused;                 ///< What raises an error whoever calls it: "os.execute".
    QHash<QString, QString> allowances;  ///< What would open those of them that can be allowed.
    QStringList refusedWithoutArguments; ///< What does so without an argument: "io.lines".
    QStringList refusedMethodsOfInput;   ///< Methods that io.stdin does not have: "read".
};

/// Lua's libraries as a script with these limits has them.
/// Thread: any. Errors: throws std::runtime_error for want of memory.
[[nodiscard]] KVKLuaVocabulary KVKLuaLibraryVocabulary(const KVKLuaLimits &limits = {});

/// The names that a function for scripts gives to a state, its tables' fields included. The function may
/// raise Lua errors; it makes no C++ objects that have a destructor. Thread: any. Errors: throws
/// std::runtime_error where it raises one.
[[nodiscard]] KVKLuaVocabulary KVKLuaVocabularyOf(void (*give)(lua_State *state));

/// Why Lua does not take a script.
struct KVKLuaSyntaxProblem
{
    int line = 1;
    QString text;
};

/// Has Lua read a script as a sequence is read, and runs nothing of it. Nothing, when it is taken.
/// Thread: any. Errors: throws std::runtime_error for want of memory.
[[nodiscard]] std::optional<KVKLuaSyntaxProblem> KVKLuaSyntaxProblemOf(const QByteArray &script);

/// Where a module is that lies not beside the script.
enum class KVKLuaModule { Nowhere, Lua, C };

/// Looks for a module among those of the machine. Thread: any.
[[nodiscard]] KVKLuaModule KVKLuaFindModule(const QByteArray &name);
