#include "platform/LogFormat.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "fuzz/Target.h"
#include "fuzz/Values.h"

using platform::Array;
using platform::Dictionary;
using platform::LogArguments;
using platform::Value;

namespace {

using fuzz::Input;
using fuzz::must;

/// How many arguments a format takes, and what it says of itself; nothing for one that holds an unknown
/// placeholder.
struct Shape
{
    std::size_t arguments = 0;
    qsizetype plain = 0; ///< Characters that stand in the message as they are.
};

std::optional<Shape> shapeOf(const QString &format)
{
    Shape shape;
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format.at(i) != QLatin1Char('%')) {
            ++shape.plain;
            continue;
        }
        const QString next = format.mid(i + 1, 2);
        if (next.startsWith(QLatin1Char('%'))) {
            ++shape.plain;
            ++i;
        } else if (next == QLatin1String("ld") || next == QLatin1String("lu")) {
            ++shape.arguments;
            i += 2;
        } else if (!next.isEmpty() && QStringLiteral("s@df").contains(next.at(0))) {
            ++shape.arguments;
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return shape;
}

void isExpandedOrRefused(const QByteArray &bytes, const std::vector<Value> &values)
{
    // A format ends at its first zero, as everywhere in C.
    const QByteArray format(bytes.constData());
    const QString text = QString::fromUtf8(format);
    const std::optional<Shape> shape = shapeOf(text);
    LogArguments arguments(values.begin(), values.end());
    try {
        const QString message = platform::formatMessage(format.constData(), arguments);
        must(shape && shape->arguments <= values.size(), "a wrong format is refused", text);
        must(message.size() >= shape->plain, "what stands around the placeholders stays", text);
        if (shape->arguments == 0)
            must(message.size() == shape->plain, "a format without placeholders is its own message", text);
    } catch (const std::invalid_argument &refusal) {
        must(!shape || shape->arguments > values.size(), "a good format is not refused", text);
        must(QByteArray(refusal.what()).contains(format), "the refusal names the format", text);
    }
}

/// Texts of arguments are never read as a format, whatever they hold.
void argumentsStandAsTheyAre(const std::vector<Value> &values)
{
    QByteArray format("<");
    QString expected("<");
    for (const Value &value : values) {
        format += "%@|";
        expected += platform::description(value) + QLatin1Char('|');
    }
    const QString message = platform::formatMessage(format.constData(), {values.begin(), values.end()});
    must(message == expected, "an argument stands in the message as it is described", message);
}

/// The value with the brackets taken out of its texts.
Value withoutBrackets(const Value &value)
{
    const auto cleaned = [](QString text) { return text.remove('(').remove(')').remove('{').remove('}'); };
    if (platform::isArray(value)) {
        Array list;
        for (const Value &element : value.toList())
            list.append(withoutBrackets(element));
        return list;
    }
    if (platform::isDictionary(value)) {
        Dictionary dictionary;
        const Dictionary given = value.toMap();
        for (auto entry = given.cbegin(); entry != given.cend(); ++entry)
            dictionary.insert(cleaned(entry.key()), withoutBrackets(entry.value()));
        return dictionary;
    }
    return value.metaType() == QMetaType::fromType<QString>() ? Value(cleaned(value.toString())) : value;
}

void isBalanced(const Value &value)
{
    const QString text = platform::description(withoutBrackets(value));
    QString open;
    for (const QChar character : text) {
        if (character == QLatin1Char('(') || character == QLatin1Char('{'))
            open += character;
        const QChar opening = character == QLatin1Char(')') ? u'(' : u'{';
        if (character == QLatin1Char(')') || character == QLatin1Char('}')) {
            must(open.endsWith(opening), "brackets close what they opened", text);
            open.chop(1);
        }
    }
    must(open.isEmpty(), "every bracket is closed", text);
}

void numbersComeBack(qint64 integer, double decimal)
{
    must(platform::integerValue(platform::description(qlonglong{integer})) == integer,
         "an integer comes back");
    if (!std::isfinite(decimal))
        return;
    const QString text = platform::description(decimal);
    must(platform::decimalValue(text) == decimal, "a decimal number comes back", text);
    constexpr double Largest = 1e15;
    if (decimal == std::trunc(decimal) && std::abs(decimal) < Largest) {
        must(!text.contains('.') && !text.contains('e'), "a whole number has no fraction", text);
        must(platform::integerValue(Value(decimal)) == static_cast<qint64>(decimal),
             "a whole number is itself", text);
    }
}

/// The C library reads numbers at the beginning of a text by the same rules, as far as blanks agree.
void textIsReadAsTheLibraryDoes(const QByteArray &bytes)
{
    for (const char character : bytes) {
        if (static_cast<unsigned char>(character) < ' ' || static_cast<unsigned char>(character) > '~')
            return;
    }
    const QString text = QString::fromLatin1(bytes);
    must(platform::integerValue(text) == std::strtoll(bytes.constData(), nullptr, 10), "an integer is read",
         text);
    const bool isOwn = bytes.contains('x') || bytes.contains('X') || bytes.toLower().contains('n');
    if (!isOwn)
        must(platform::decimalValue(text) == std::strtod(bytes.constData(), nullptr), "a decimal is read",
             text);
    must(!platform::booleanValue(QLatin1Char('0') + text) || !text.isEmpty(), "a zero alone is not true",
         text);
}

class LogFormatTarget : public fuzz::Target
{
public:
    void feed(Input input) override
    {
        std::vector<Value> values;
        for (int left = input.below(5); left > 0; --left)
            values.push_back(fuzz::valueFrom(input, 3));
        numbersComeBack(input.integer(), input.decimal());
        argumentsStandAsTheyAre(values);
        for (const Value &value : values) {
            isBalanced(value);
            must(fuzz::areSame(platform::ownCopy(value), value), "a copy is the same value",
                 platform::description(value));
        }
        textIsReadAsTheLibraryDoes(input.someBytes());
        isExpandedOrRefused(input.rest(), values);
    }
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<LogFormatTarget>();
}
