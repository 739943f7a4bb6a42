#pragma once

#include <QString>

// The labels by which a plug-in's function table names methods and argument types. Their text is the host's own
// business: a plug-in makes them with these functions and stores them, the sequencer reads them.

/// The classes of arguments that a function can take from Lua.
enum class KVKArgType { NSNumber, NSDictionary };

/// The label of a method, from its selector: "showView:config:error:".
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sequencer's published name
[[nodiscard]] QString __kviGetSelectorLabel(const char *selector);
/// The label of an argument's class.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sequencer's published name
[[nodiscard]] QString __kviArgTypeLabel(KVKArgType type);
