#pragma once

#include "platform/Identifier.h"

#include <QString>

/// The identifiers of views: how they are made from a panel key and names, and how they are taken apart
/// again.
///
/// Panel key, position and name are joined by "-"; a key or name that holds a "-" itself is split at its own
/// first one, since the separator is not escaped. Thread: any.
namespace interactive::identifiers {

inline const QString Separator = QStringLiteral("-");
inline const QString SharedInput = QStringLiteral("SharedInput");
/// The line that tells why an entry was refused.
inline const QString StatusLine = QStringLiteral("StatusLine");
/// The bar of a time limit.
inline const QString TimeBar = QStringLiteral("TimeBar");
inline const QString LineView = QStringLiteral("lineView");
inline const QString Group = QStringLiteral("group");
/// The last button of a row.
inline const QString Pass = QStringLiteral("Pass");
/// Added to a system index to make the tag of the system's controls.
inline constexpr int TagOffset = 100;

/// The system index that a tag stands for, and the tag of a system.
[[nodiscard]] constexpr qint64 systemOfTag(int tag)
{
    return static_cast<qint64>(tag) - TagOffset;
}
[[nodiscard]] constexpr int tagOfSystem(qint64 systemIndex)
{
    return static_cast<int>(systemIndex + TagOffset);
}

/// "G1-S3": a field of the panel, a container, a separator line.
[[nodiscard]] platform::Identifier named(const QString &panelKey, const QString &name);
/// "G1-0-OK": a control with a position.
[[nodiscard]] platform::Identifier indexed(const QString &panelKey, qint64 position, const QString &name);

/// The text before the first separator, or the very same instance when there is none.
[[nodiscard]] platform::Identifier before(const QString &separator, const platform::Identifier &from);
/// The text after the first separator, or the very same instance when there is none.
[[nodiscard]] platform::Identifier after(const QString &separator, const platform::Identifier &from);

/// The part that names the panel, and the part that names what belongs to it.
[[nodiscard]] QString panelPart(const platform::Identifier &identifier);
[[nodiscard]] QString slotPart(const platform::Identifier &identifier);

} // namespace interactive::identifiers
