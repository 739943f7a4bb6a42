#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The labels by which a plug-in's function table names methods and argument types. Their text is the
// sequencer's own business: a plug-in makes them with the first two functions and stores them, the sequencer
// reads them with the others. Thread: any.

/// The classes of arguments that a function can take from Lua.
enum class KVKArgType { NSNumber, NSDictionary };

/// The label of a method, from its selector: "showView:config:error:".
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sequencer's published name
[[nodiscard]] QString __kviGetSelectorLabel(const char *selector);
/// The label of an argument's class.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sequencer's published name
[[nodiscard]] QString __kviArgTypeLabel(KVKArgType type);

/// The selector that a label was made from; nothing for any other text.
[[nodiscard]] std::optional<QByteArray> KVKSelectorOfLabel(const QString &label);
/// The class that a label was made from; nothing for any other text.
[[nodiscard]] std::optional<KVKArgType> KVKArgTypeOfLabel(const QString &label);
