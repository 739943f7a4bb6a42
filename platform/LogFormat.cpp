#include "platform/LogFormat.h"

#include <cstring>
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
        m_content = value;
}

LogArgument::LogArgument(const Dictionary &value)
    : m_content(Value(value))
{}

LogArgument::LogArgument(const Array &value)
    : m_content(Value(value))
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
    if (const auto *value = std::get_if<Value>(&m_content))
        return description(*value);
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

std::size_t LogArgument::weight() const
{
    // What an entry of a map or an element of a list takes, its own text among it.
    constexpr std::size_t OfEntry = 150;
    constexpr std::size_t OfElement = 80;
    if (const auto *text = std::get_if<QString>(&m_content))
        return static_cast<std::size_t>(text->size()) * sizeof(QChar);
    const auto *value = std::get_if<Value>(&m_content);
    if (!value)
        return 0;
    // Looked at where it lies: to take it out of the value would share it once more.
    if (isDictionary(*value))
        return static_cast<std::size_t>(static_cast<const Dictionary *>(value->constData())->size()) *
               OfEntry;
    if (isArray(*value))
        return static_cast<std::size_t>(static_cast<const Array *>(value->constData())->size()) * OfElement;
    if (value->metaType() == QMetaType::fromType<QString>())
        return static_cast<std::size_t>(static_cast<const QString *>(value->constData())->size()) *
               sizeof(QChar);
    return 0;
}

namespace {

[[noreturn]] void refuse(const char *format, const char *why)
{
    throw std::invalid_argument("log format \"" + std::string(format) + "\" " + why);
}

/// One placeholder of a format, as it is taken from there.
enum class Placeholder { Text, Integer, Unsigned, Decimal, PerCent };

/// Reads the placeholder behind a per-cent sign, and goes behind it.
Placeholder readPlaceholder(const char *format, const char *&at)
{
    const char first = *at;
    if (first == '\0')
        refuse(format, "holds an unknown placeholder");
    ++at;
    switch (first) {
    case 's':
    case '@':
        return Placeholder::Text;
    case 'd':
        return Placeholder::Integer;
    case 'f':
        return Placeholder::Decimal;
    case '%':
        return Placeholder::PerCent;
    case 'l':
        if (*at == 'd' || *at == 'u')
            return *at++ == 'd' ? Placeholder::Integer : Placeholder::Unsigned;
        break;
    default:
        break;
    }
    refuse(format, "holds an unknown placeholder");
}

/// Tells each placeholder, with the characters that it takes behind its per-cent sign. Bytes are looked at,
/// since no part of a longer character in UTF-8 reads as that sign.
template <class Place>
void forEachPlaceholder(const char *format, const Place &place)
{
    const char *at = format;
    while (at && (at = std::strchr(at, '%'))) {
        const char *const begin = ++at;
        const Placeholder kind = readPlaceholder(format, at);
        place(kind, at - begin);
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
    qsizetype done = 0;
    std::size_t next = 0;
    forEachPlaceholder(format, [&](Placeholder kind, qsizetype length) {
        const qsizetype sign = text.indexOf(QLatin1Char('%'), done);
        message += QStringView(text).mid(done, sign - done);
        done = sign + 1 + length;
        if (kind == Placeholder::PerCent)
            message += QLatin1Char('%');
        else if (next < arguments.size())
            message += expand(kind, arguments[next++]);
        else
            refuse(format, "asks for more arguments than there are");
    });
    message += QStringView(text).mid(done);
    return message;
}

void checkFormat(const char *format, std::size_t argumentCount)
{
    std::size_t needed = 0;
    forEachPlaceholder(format, [&](Placeholder kind, qsizetype) {
        if (kind != Placeholder::PerCent && ++needed > argumentCount)
            refuse(format, "asks for more arguments than there are");
    });
}

} // namespace platform
