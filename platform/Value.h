#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

namespace platform {

/// What crosses the border between Lua, the host and the plug-in: number, text, boolean, array, dictionary.
/// An invalid QVariant is "nothing".
using Value = QVariant;
using Array = QVariantList;
using Dictionary = QVariantMap;

/// The value as text, as it is shown in logs and used wherever a text is read from a configuration:
/// a text as it stands, an integer in decimal digits, a whole decimal number without a fraction (8.0 is "8"),
/// another one in its shortest exact form, a boolean as "1" or "0", a function as "<function>", an array as
/// "(a, b)", a dictionary as
/// "{key = value; key = value}" with its keys in ascending order, nothing as "(null)".
[[nodiscard]] QString description(const Value &value);

/// The integer a text begins with: blanks are skipped, then an optional sign and digits are read and the
/// rest is ignored; 0 when there are no digits; a number out of range saturates.
[[nodiscard]] qint64 integerValue(const QString &text);
/// The integer of a value: a number truncated towards zero (saturating; 0 for not-a-number), a boolean as
/// 1 or 0, a text as above, anything else 0.
[[nodiscard]] qint64 integerValue(const Value &value);

/// The truth that a text begins with: after leading blanks, an optional sign and zeros, a first character
/// Y, y, T, t or a digit 1 to 9 means true; anything else means false.
[[nodiscard]] bool booleanValue(const QString &text);

/// The longest numeric prefix of a text after leading blanks (sign, digits, fraction, exponent; always with
/// a full stop, whatever the locale); 0 when there is none.
[[nodiscard]] double decimalValue(const QString &text);

/// True for integers and decimals, not for booleans or numeric text.
[[nodiscard]] bool isNumber(const Value &value);
[[nodiscard]] bool isArray(const Value &value);
[[nodiscard]] bool isDictionary(const Value &value);

/// The value with all that it holds, sharing nothing with the original: for handing to another thread, where
/// the original may be written again. Values share what they hold, and whether somebody else still reads it
/// is looked at without order between threads. Thread: any that may read the original.
[[nodiscard]] Value ownCopy(const Value &value);

} // namespace platform
