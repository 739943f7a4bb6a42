#pragma once

#include "platform/Identifier.h"
#include "platform/Value.h"

#include <QString>

#include <initializer_list>
#include <type_traits>
#include <variant>
#include <vector>

namespace platform {

/// One argument of a log format: a text, an integer, a decimal number, any other value or "nothing".
///
/// A value is kept as it is given, shared and not walked; its text is made where a message is formatted,
/// which may be on another thread and later. Requires: what a dictionary, an array or a text shares is not
/// written in place afterwards; an owner that writes into its own gives ownCopy() of it.
class LogArgument
{
public:
    LogArgument(std::nullptr_t);
    LogArgument(const char *text);
    LogArgument(const QString &text);
    LogArgument(const Identifier &identifier);
    LogArgument(const Value &value);
    LogArgument(const Dictionary &value);
    LogArgument(const Array &value);
    LogArgument(double number);
    template <class Integer>
    requires std::is_integral_v<Integer> LogArgument(Integer number)
        : m_content(static_cast<qint64>(number))
    {}

    [[nodiscard]] QString asText() const;
    [[nodiscard]] qint64 asInteger() const;
    [[nodiscard]] double asDecimal() const;

    /// About how many bytes it keeps from being freed, as far as that is known without walking it.
    [[nodiscard]] std::size_t weight() const;

private:
    std::variant<std::monostate, QString, qint64, double, Value> m_content;
};

using LogArguments = std::vector<LogArgument>;

/// Expands a message format. The placeholders are those of the platform: `%s` and `%@` a text (nothing is
/// "(null)"), `%d` and `%ld` an integer, `%lu` an unsigned integer, `%f` a decimal number with six decimals,
/// `%%` a per-cent sign. The n-th placeholder takes the n-th argument.
///
/// Thread: any. Errors: a format that asks for more arguments than there are, or that holds an unknown
/// placeholder, is a programming mistake and throws std::invalid_argument naming the format.
[[nodiscard]] QString formatMessage(const char *format, const LogArguments &arguments);

/// Throws what formatMessage() would, and makes no text.
void checkFormat(const char *format, std::size_t argumentCount);

} // namespace platform
