#pragma once

#include <QString>

/// The words under which a panel's record and the loop record keep their entries in savedData.
namespace interactive::keys {

// A panel's record; every other key is a slot name (or a slot panel's input name).
inline const QString Length = QStringLiteral("length");
inline const QString ClickedButton = QStringLiteral("clickedButton");

// The loop record
inline const QString Loop = QStringLiteral("Loop");
inline const QString LoopMax = QStringLiteral("LoopMax");
inline const QString LoopCount = QStringLiteral("LoopCount");

// A tile's data in the overview
inline const QString Index = QStringLiteral("index");

} // namespace interactive::keys
