#pragma once

#include "platform/Value.h"

#include <QString>

/// The keys of the configuration that a show call takes, and how their values are read.
namespace interactive::config {

inline const QString Input = QStringLiteral("input");
inline const QString Switch = QStringLiteral("switch");
inline const QString Button = QStringLiteral("button");
inline const QString Length = QStringLiteral("length");
inline const QString Message = QStringLiteral("message");
inline const QString Label = QStringLiteral("label");
inline const QString Title = QStringLiteral("title");
inline const QString Column = QStringLiteral("column");
inline const QString BackgroundAlpha = QStringLiteral("backgroundAlpha");
inline const QString DrawShadow = QStringLiteral("drawShadow");
inline const QString MessageFont = QStringLiteral("messageFont");
inline const QString MessageColor = QStringLiteral("messageColor");
inline const QString MessageAlignment = QStringLiteral("messageAlignment");
inline const QString Pattern = QStringLiteral("pattern");
inline const QString Hint = QStringLiteral("hint");
inline const QString Validate = QStringLiteral("validate");
inline const QString Unique = QStringLiteral("unique");
inline const QString Number = QStringLiteral("number");
inline const QString Choices = QStringLiteral("choices");
inline const QString Default = QStringLiteral("default");
inline const QString Placeholder = QStringLiteral("placeholder");
inline const QString AutoConfirm = QStringLiteral("autoConfirm");
inline const QString TimeLimit = QStringLiteral("timeLimit");
inline const QString Image = QStringLiteral("image");
inline const QString Instruction = QStringLiteral("instruction");

/// The label of a value that a configuration does not name.
inline const QString DefaultLabel = QStringLiteral("SN");

/// A value of a dictionary as text: its description, or the empty text when the key is missing.
[[nodiscard]] QString text(const QString &key, const platform::Dictionary &from);
/// The same read as an integer (0 when there is none).
[[nodiscard]] qint64 integer(const QString &key, const platform::Dictionary &from);
/// "label", or "SN" when absent or empty.
[[nodiscard]] QString label(const platform::Dictionary &from);

} // namespace interactive::config
