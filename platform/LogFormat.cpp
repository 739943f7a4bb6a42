#include "platform/LogFormat.h"

#include <stdexcept>
#include <string>

namespace platform {

LogArgument::LogArgument(std::nullptr_t) {}

LogArgument::LogArgument(const char *text)
{
    if (text)
        m_content = QString::fromUtf8(text);
}

LogArgument::LogArgument(const QString &text)
    : m_content(text)
{}

LogArgument::LogArgument(const Identifier &identifier)
{
    if (!identifier.isNull())
        m_content = identifier.text();
}

LogArgument::LogArgument(const Value &value)
{
    if (value.isValid())
        m_content = description(value);
}

LogArgument::LogArgument(const Dictionary &value)
    : m_content(description(value))
{}

LogArgument::LogArgument(const Array &value)
    : m_content(description(value))
{}

LogArgument::LogArgument(double number)
    : m_content(number)
{}

QString LogArgument::asText() const
{
    if (const auto *text = std::get_if<QString>(&m_content))
        return *text;
    if (const auto *integer = std::get_if<qint64>(&m_content))
        return QString::number(*integer);
    if (const auto *decimal = std::get_if<double>(&m_content))
        return description(*decimal);
    return QStringLiteral("(null)");
}

qint64 LogArgument::asInteger() const
{
    if (const auto *integer = std::get_if<qint64>(&m_content))
        return *integer;
    if (const auto *decimal = std::get_if<double>(&m_content))
        return integerValue(Value(*decimal));
    return integerValue(asText());
}

double LogArgument::asDecimal() const
{
    if (const auto *decimal = std::get_if<double>(&m_content))
        return *decimal;
    if (const auto *integer = std::get_if<qint64>(&m_content))
        return static_cast<double>(*integer);
    return decimalValue(asText());
}

namespace {

[[noreturn]] void refuse(const char *format, const char *why)
{
    throw std::invalid_argument("log format \"" + std::string(format) + "\" " + why);
}

/// One placeholder of a format, as it is taken from there.
enum class Placeholder { Text, Integer, Unsigned, Decimal, PerCent };

/// Reads the placeholder behind a per-cent sign; `at` moves behind it.
Placeholder readPlaceholder(const char *format, const QString &text, qsizetype &at)
{
    const QString rest = text.mid(at, 2);
    const auto take = [&at](qsizetype length, Placeholder kind) {
        at += length;
        return kind;
    };
    if (rest == QStringLiteral("ld"))
        return take(2, Placeholder::Integer);
    if (rest == QStringLiteral("lu"))
        return take(2, Placeholder::Unsigned);
    switch (rest.isEmpty() ? u'\0' : rest.front().unicode()) {
    case u's':
    case u'@':
        return take(1, Placeholder::Text);
    case u'd':
        return take(1, Placeholder::Integer);
    case u'f':
        return take(1, Placeholder::Decimal);
    case u'%':
        return take(1, Placeholder::PerCent);
    default:
        refuse(format, "holds an unknown placeholder");
    }
}

QString expand(Placeholder kind, const LogArgument &argument)
{
    switch (kind) {
    case Placeholder::Integer:
        return QString::number(argument.asInteger());
    case Placeholder::Unsigned:
        return QString::number(static_cast<quint64>(argument.asInteger()));
    case Placeholder::Decimal:
        // Six digits behind the point, as %f has them everywhere.
        return QString::number(argument.asDecimal(), 'f', 6);
    default:
        return argument.asText();
    }
}

} // namespace

QString formatMessage(const char *format, const LogArguments &arguments)
{
    const QString text = QString::fromUtf8(format);
    QString message;
    std::size_t next = 0;
    for (qsizetype at = 0; at < text.size();) {
        if (text.at(at) != QLatin1Char('%')) {
            message.append(text.at(at++));
            continue;
        }
        const Placeholder kind = readPlaceholder(format, text, ++at);
        if (kind == Placeholder::PerCent) {
            message.append(QLatin1Char('%'));
            continue;
        }
        if (next >= arguments.size())
            refuse(format, "asks for more arguments than there are");
        message.append(expand(kind, arguments[next++]));
    }
    return message;
}

} // namespace platform
