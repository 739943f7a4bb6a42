#include "platform/Value.h"

#include "platform/Callback.h"

#include <QLocale>
#include <QStringList>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace platform {

namespace {

qsizetype skipBlanks(const QString &text)
{
    qsizetype at = 0;
    while (at < text.size() && text.at(at).isSpace())
        ++at;
    return at;
}

bool isDigitAt(const QString &text, qsizetype at)
{
    return at < text.size() && text.at(at) >= QLatin1Char('0') && text.at(at) <= QLatin1Char('9');
}

bool isSignAt(const QString &text, qsizetype at)
{
    return at < text.size() && (text.at(at) == QLatin1Char('+') || text.at(at) == QLatin1Char('-'));
}

qsizetype skipDigits(const QString &text, qsizetype at)
{
    while (isDigitAt(text, at))
        ++at;
    return at;
}

qint64 saturated(double number)
{
    if (std::isnan(number))
        return 0;
    // 2^63 itself is the first decimal number out of range.
    constexpr double Limit = 9223372036854775808.0;
    if (number >= Limit)
        return std::numeric_limits<qint64>::max();
    if (number < -Limit)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(number);
}

QString describeDecimal(double number)
{
    const double whole = std::trunc(number);
    // 2^53: beyond it a decimal number no longer tells neighbouring integers apart.
    constexpr double ExactlyWhole = 9007199254740992.0;
    if (whole == number && std::abs(number) <= ExactlyWhole)
        return QString::number(static_cast<qint64>(number));
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

/// A float has fewer digits to tell than the decimal number that it converts to.
QString describeFloat(float number)
{
    // The shortest text of a float that reads back as the same one has fewer characters.
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return describeDecimal(QLocale::c().toDouble(QString::fromLatin1(text.data(), end - text.data())));
}

/// Into one text, however deep: what is saved may hold thousands of values.
void append(QString &text, const Value &value);

void appendArray(QString &text, const Array &array)
{
    text += QLatin1Char('(');
    for (auto element = array.cbegin(); element != array.cend(); ++element) {
        if (element != array.cbegin())
            text += QLatin1String(", ");
        append(text, *element);
    }
    text += QLatin1Char(')');
}

void appendDictionary(QString &text, const Dictionary &dictionary)
{
    text += QLatin1Char('{');
    for (auto entry = dictionary.cbegin(); entry != dictionary.cend(); ++entry) {
        if (entry != dictionary.cbegin())
            text += QLatin1String("; ");
        text += entry.key();
        text += QLatin1String(" = ");
        append(text, entry.value());
    }
    text += QLatin1Char('}');
}

void append(QString &text, const Value &value)
{
    switch (value.metaType().id()) {
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        appendArray(text, value.toList());
        break;
    case QMetaType::QVariantMap:
        appendDictionary(text, value.toMap());
        break;
    default:
        text += description(value);
    }
}

QString describeWhole(const Value &value)
{
    QString text;
    append(text, value);
    return text;
}

/// Where a number that begins at `at` ends; `at` itself when there is none.
qsizetype endOfDecimal(const QString &text, qsizetype at)
{
    const qsizetype begin = at;
    if (isSignAt(text, at))
        ++at;
    const qsizetype whole = at;
    at = skipDigits(text, at);
    qsizetype digits = at - whole;
    if (at < text.size() && text.at(at) == QLatin1Char('.')) {
        const qsizetype end = skipDigits(text, at + 1);
        digits += end - at - 1;
        if (digits > 0)
            at = end;
    }
    if (digits == 0)
        return begin;
    if (at < text.size() && text.at(at).toLower() == QLatin1Char('e')) {
        const qsizetype exponent = isSignAt(text, at + 1) ? at + 2 : at + 1;
        if (isDigitAt(text, exponent))
            at = skipDigits(text, exponent);
    }
    return at;
}

QString ownText(const QString &text)
{
    return QString(text.constData(),
                   text.size()); // NOLINT(modernize-return-braced-init-list): an explicit one
}

} // namespace

QString description(const Value &value)
{
    if (!value.isValid())
        return QStringLiteral("(null)");
    if (value.metaType() == QMetaType::fromType<std::shared_ptr<Callback>>())
        return QStringLiteral("<function>");
    switch (value.metaType().id()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Double:
        return describeDecimal(value.toDouble());
    case QMetaType::Float:
        return describeFloat(value.toFloat());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
    case QMetaType::QVariantMap:
        return describeWhole(value);
    default:
        return value.toString();
    }
}

qint64 integerValue(const QString &text)
{
    qsizetype at = skipBlanks(text);
    const bool negative = isSignAt(text, at) && text.at(at) == QLatin1Char('-');
    if (isSignAt(text, at))
        ++at;
    quint64 number = 0;
    constexpr auto Largest = static_cast<quint64>(std::numeric_limits<qint64>::max());
    const quint64 limit = negative ? Largest + 1 : Largest;
    for (; isDigitAt(text, at); ++at) {
        const auto digit = static_cast<quint64>(text.at(at).digitValue());
        // Asked before the digit is put on: the sum itself could be out of range.
        if (number > (limit - digit) / 10)
            return negative ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
        number = number * 10 + digit;
    }
    // Negated unsigned, since the lowest integer has no positive counterpart.
    return negative ? static_cast<qint64>(0 - number) : static_cast<qint64>(number);
}

qint64 integerValue(const Value &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Bool:
        return value.toBool() ? 1 : 0;
    case QMetaType::Double:
    case QMetaType::Float:
        return saturated(value.toDouble());
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return value.toULongLong() > static_cast<quint64>(std::numeric_limits<qint64>::max())
                   ? std::numeric_limits<qint64>::max()
                   : value.toLongLong();
    case QMetaType::QString:
        return integerValue(value.toString());
    default:
        return isNumber(value) ? value.toLongLong() : 0;
    }
}

bool booleanValue(const QString &text)
{
    qsizetype at = skipBlanks(text);
    if (isSignAt(text, at))
        ++at;
    while (at < text.size() && text.at(at) == QLatin1Char('0'))
        ++at;
    if (at >= text.size())
        return false;
    return QStringLiteral("YyTt123456789").contains(text.at(at));
}

double decimalValue(const QString &text)
{
    const qsizetype begin = skipBlanks(text);
    const qsizetype end = endOfDecimal(text, begin);
    return end == begin ? 0.0 : QLocale::c().toDouble(text.mid(begin, end - begin));
}

bool isNumber(const Value &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

bool isArray(const Value &value)
{
    return value.metaType() == QMetaType::fromType<Array>();
}

bool isDictionary(const Value &value)
{
    return value.metaType() == QMetaType::fromType<Dictionary>();
}

Value ownCopy(const Value &value)
{
    if (value.metaType() == QMetaType::fromType<QString>())
        return ownText(value.toString());
    if (isArray(value) || value.metaType() == QMetaType::fromType<QStringList>()) {
        Array copy;
        for (const Value &element : value.toList())
            copy.append(ownCopy(element));
        return copy;
    }
    if (isDictionary(value)) {
        Dictionary copy;
        const Dictionary original = value.toMap();
        for (auto entry = original.cbegin(); entry != original.cend(); ++entry)
            copy.insert(ownText(entry.key()), ownCopy(entry.value()));
        return copy;
    }
    return value;
}

} // namespace platform
