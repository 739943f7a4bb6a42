#pragma once

#include "platform/Color.h"

#include <QString>

#include <optional>

namespace interactive {

// The names of the colours that a configuration may use. Several differ on purpose from the usual web
// colours.
inline const QString ColorNameKeyNavy = QStringLiteral("navy");
inline const QString ColorNameKeyBlue = QStringLiteral("blue");
inline const QString ColorNameKeyTeal = QStringLiteral("teal");
inline const QString ColorNameKeyCyan = QStringLiteral("cyan");
inline const QString ColorNameKeyGray = QStringLiteral("gray");
inline const QString ColorNameKeySilver = QStringLiteral("silver");
inline const QString ColorNameKeyBrown = QStringLiteral("brown");
inline const QString ColorNameKeyPink = QStringLiteral("pink");
inline const QString ColorNameKeyMagenta = QStringLiteral("magenta");
inline const QString ColorNameKeyPurple = QStringLiteral("purple");
inline const QString ColorNameKeyWhite = QStringLiteral("white");
inline const QString ColorNameKeyBlack = QStringLiteral("black");
inline const QString ColorNameKeyRed = QStringLiteral("red");
inline const QString ColorNameKeyYellow = QStringLiteral("yellow");
inline const QString ColorNameKeyOrange = QStringLiteral("orange");
inline const QString ColorNameKeyGreen = QStringLiteral("green");

/// Turns the name of a colour into the colour.
///
/// Thread: any; keeps no state.
class ColorEngine
{
public:
    ColorEngine() = delete;

    /// The opaque colour of that name in any mix of upper and lower case, or nothing for any other text.
    /// Blanks are not trimmed.
    [[nodiscard]] static std::optional<platform::Color> colorForName(const QString &name);
};

} // namespace interactive
