#pragma once

#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"

#include <QString>

#include "common/StationMap.h"

/// Tells the host what becomes of entries and panels, in the host's words: a panel's key becomes the group,
/// slot and system that it stands for. Thread: the main thread.
namespace interactive::news {

/// Why an entry is refused, in a word (see KVKRefusedEntry).
inline const QString Length = QStringLiteral("length");
inline const QString Pattern = QStringLiteral("pattern");
inline const QString Number = QStringLiteral("number");
inline const QString Choice = QStringLiteral("choice");
inline const QString Duplicate = QStringLiteral("duplicate");
inline const QString Validate = QStringLiteral("validate");
inline const QString Unreadable = QStringLiteral("unreadable");
inline const QString Late = QStringLiteral("late");
inline const QString Nowhere = QStringLiteral("nowhere");

/// Whose panel has the key, and which of its labels is meant; a key that is no panel's is a label by itself.
[[nodiscard]] KVKEntryPlace placeOf(const StationMap &station, const QString &panelKey,
                                    const QString &label = {});

} // namespace interactive::news
