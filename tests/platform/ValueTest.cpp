#include "platform/Value.h"

#include "tests/support/Printing.h"

#include <QLocale>
#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

constexpr qint64 largest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();
constexpr double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::nan("");

template <class Input, class Output>
struct Reading
{
    Input given;
    Output expected;
};

} // namespace

TEST(Value, DescribesEachKindInItsWay)
{
    const Reading<Value, const char *> table[] = {
        {Value(), "(null)"},
        {"text", "text"},
        {"", ""},
        {" kept as it stands ", " kept as it stands "},
        {QStringLiteral("Prüfling é"), "Prüfling é"},
        {"100%", "100%"},
        {"%1 and %2", "%1 and %2"},
        {0, "0"},
        {-17, "-17"},
        {42u, "42"},
        {largest, "9223372036854775807"},
        {smallest, "-9223372036854775808"},
        {std::numeric_limits<quint64>::max(), "18446744073709551615"},
        {Value::fromValue<short>(-3), "-3"},
        {true, "1"},
        {false, "0"},
    };
    for (const auto &row : table)
        EXPECT_EQ(platform::description(row.given), QString::fromUtf8(row.expected));
}

TEST(Value, DescribesDecimalNumbersWithoutNeedlessDigits)
{
    const Reading<Value, const char *> table[] = {
        {8.0, "8"},
        {-8.0, "-8"},
        {0.0, "0"},
        {8.5, "8.5"},
        {0.1, "0.1"},
        {0.1 + 0.2, "0.30000000000000004"},
        {-2.25, "-2.25"},
        {1.0 / 3.0, "0.3333333333333333"},
        {1e6, "1000000"},
        {123456789.0, "123456789"},
        {9007199254740992.0, "9007199254740992"},
        {1e300, "1e+300"},
        {5e-324, "5e-324"},
        {infinity, "inf"},
        {-infinity, "-inf"},
        {0.1F, "0.1"},
        {8.0F, "8"},
        {1.5F, "1.5"},
    };
    for (const auto &row : table)
        EXPECT_EQ(platform::description(row.given), QString::fromUtf8(row.expected));
}

TEST(Value, ADescribedDecimalReadsBackExactly)
{
    for (const double number : {0.1, 2.0 / 3.0, 1e-7, 123456.789, 1.7976931348623157e308,
                                2.2250738585072014e-308, -4.35, 9007199254740993.0, 1e15, 1e16, 1e21})
        EXPECT_EQ(platform::decimalValue(platform::description(number)), number) << number;
}

TEST(Value, DescribesContainersOnOneLine)
{
    const Reading<Value, const char *> table[] = {
        {Array(), "()"},
        {Array{1}, "(1)"},
        {Array{1, "two", 3.0, true, Value()}, "(1, two, 3, 1, (null))"},
        {QStringList{"S1", "S2"}, "(S1, S2)"},
        {Dictionary(), "{}"},
        {Dictionary{{"length", 5}}, "{length = 5}"},
        {Dictionary{{"b", 2}, {"a", 1.5}, {"B", Value()}}, "{B = (null); a = 1.5; b = 2}"},
        {Dictionary{{"slots", Array{Array{1, 2}, Dictionary{{"x", false}}}}}, "{slots = ((1, 2), {x = 0})}"},
        {Dictionary{{"%1", "%2"}}, "{%1 = %2}"},
        {Array{"%1", "%2"}, "(%1, %2)"},
    };
    for (const auto &row : table)
        EXPECT_EQ(platform::description(row.given), QString::fromUtf8(row.expected));
}

TEST(Value, ATextIsReadAsTheIntegerThatItBeginsWith)
{
    const Reading<const char *, qint64> table[] = {
        {"12", 12},
        {"12abc", 12},
        {" 7", 7},
        {"\t\n 7 8", 7},
        {"abc", 0},
        {"abc12", 0},
        {"", 0},
        {" ", 0},
        {"+5", 5},
        {"-3", -3},
        {"+-3", 0},
        {"--3", 0},
        {"- 3", 0},
        {"-", 0},
        {"+", 0},
        {"8.9", 8},
        {"-8.9", -8},
        {".9", 0},
        {"007", 7},
        {"0x10", 0},
        {"1e3", 1},
        {"1,000", 1},
        {"-0", 0},
        {"\xd9\xa3", 0}, // a digit, but not one of ours
        {"9223372036854775806", largest - 1},
        {"9223372036854775807", largest},
        {"9223372036854775808", largest},
        {"9223372036854775817", largest},
        {"99999999999999999999999999", largest},
        {"-9223372036854775807", smallest + 1},
        {"-9223372036854775808", smallest},
        {"-9223372036854775809", smallest},
        {"-99999999999999999999999999", smallest},
    };
    for (const auto &row : table)
        EXPECT_EQ(platform::integerValue(QString::fromUtf8(row.given)), row.expected)
            << '"' << row.given << '"';
}

TEST(Value, AValueIsReadAsAnInteger)
{
    const Reading<Value, qint64> table[] = {
        {Value(), 0},
        {17, 17},
        {-17, -17},
        {4000000000u, 4000000000},
        {largest, largest},
        {static_cast<quint64>(largest) + 1, largest},
        {Value::fromValue<unsigned long>(std::numeric_limits<unsigned long>::max()), largest},
        {8.9, 8},
        {-8.9, -8},
        {1e300, largest},
        {-1e300, smallest},
        {9223372036854775808.0, largest},
        {-9223372036854775808.0, smallest},
        {infinity, largest},
        {-infinity, smallest},
        {notANumber, 0},
        {2.5F, 2},
        {true, 1},
        {false, 0},
        {"12abc", 12},
        {"abc", 0},
        {Array{12}, 0},
        {Dictionary{{"a", 12}}, 0},
    };
    for (const auto &row : table)
        EXPECT_EQ(platform::integerValue(row.given), row.expected) << ::testing::PrintToString(row.given);
}

TEST(Value, ATextIsReadAsTheTruthThatItBeginsWith)
{
    const Reading<const char *, bool> table[] = {
        {"YES", true},  {"yes", true},  {"y", true},    {"T", true},    {"true", true},   {"tomorrow", true},
        {"1", true},    {"9", true},    {"10", true},   {"  1", true},  {"+1", true},     {"-1", true},
        {"007", true},  {"-00Y", true}, {"NO", false},  {"n", false},   {"false", false}, {"", false},
        {"   ", false}, {"0", false},   {"000", false}, {"-0", false},  {"+", false},     {"--1", false},
        {"0x1", false}, {"0.5", false}, {"on", false},  {"- 1", false}, {"nyt1", false},
    };
    for (const auto &row : table)
        EXPECT_EQ(platform::booleanValue(QString::fromUtf8(row.given)), row.expected)
            << '"' << row.given << '"';
}

TEST(Value, ATextIsReadAsItsLongestNumericPrefix)
{
    const Reading<const char *, double> table[] = {
        {"12", 12.0},
        {"12.5", 12.5},
        {"12.5V", 12.5},
        {" \t12.5", 12.5},
        {"+0.5", 0.5},
        {"-0.5", -0.5},
        {".5", 0.5},
        {"5.", 5.0},
        {"5.x", 5.0},
        {"1e3", 1000.0},
        {"1E3", 1000.0},
        {"1e+3", 1000.0},
        {"1e-3", 0.001},
        {"1e", 1.0},
        {"1e+", 1.0},
        {"1e-x", 1.0},
        {"1e 3", 1.0},
        {"-.5e2x", -50.0},
        {"5.e1", 50.0},
        {"1.2.3", 1.2},
        {"1,5", 1.0},
        {"1,000", 1.0},
        {"1 000", 1.0},
        {"0x10", 0.0},
        {"", 0.0},
        {" ", 0.0},
        {".", 0.0},
        {"-", 0.0},
        {"-.", 0.0},
        {".e5", 0.0},
        {"e5", 0.0},
        {"+-1", 0.0},
        {"V12", 0.0},
        {"inf", 0.0},
        {"-infinity", 0.0},
        {"nan", 0.0},
        {"1e400", infinity},
        {"-1e400", -infinity},
        {"1e-400", 0.0},
        {"0.1", 0.1},
        {"123456789012345678901234567890", 123456789012345678901234567890.0},
    };
    for (const auto &row : table)
        EXPECT_EQ(platform::decimalValue(QString::fromUtf8(row.given)), row.expected)
            << '"' << row.given << '"';
}

TEST(Value, NumbersAreReadAndWrittenAlikeUnderEveryLocale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(platform::decimalValue(QStringLiteral("1.5")), 1.5);
    EXPECT_EQ(platform::decimalValue(QStringLiteral("1,5")), 1.0);
    EXPECT_EQ(platform::integerValue(QStringLiteral("1.234")), 1);
    EXPECT_EQ(platform::description(1234.5), QStringLiteral("1234.5"));
    EXPECT_EQ(platform::description(1234567), QStringLiteral("1234567"));
    QLocale::setDefault(before);
}

TEST(Value, NumbersAreWhatIsNeitherTruthNorText)
{
    for (const Value &number : {Value(1), Value(1u), Value(largest), Value(quint64(1)), Value(1.5),
                                Value(1.5F), Value::fromValue<short>(1), Value::fromValue<long>(1)})
        EXPECT_TRUE(platform::isNumber(number)) << number.typeName();
    for (const Value &other : {Value(), Value(true), Value("1"), Value(Array{1}), Value(Dictionary())})
        EXPECT_FALSE(platform::isNumber(other)) << other.typeName();
}

TEST(Value, TellsArraysFromDictionaries)
{
    EXPECT_TRUE(platform::isArray(Array()));
    EXPECT_TRUE(platform::isArray(Array{1}));
    EXPECT_TRUE(platform::isDictionary(Dictionary()));
    EXPECT_TRUE(platform::isDictionary(Dictionary{{"a", 1}}));
    EXPECT_FALSE(platform::isArray(Dictionary()));
    EXPECT_FALSE(platform::isDictionary(Array()));
    for (const Value &other : {Value(), Value("(1)"), Value(1), Value(true)}) {
        EXPECT_FALSE(platform::isArray(other));
        EXPECT_FALSE(platform::isDictionary(other));
    }
}

TEST(OwnCopy, IsEqualAndSharesNothing)
{
    const platform::Dictionary original{{"text", QString("S1") + QChar('x')},
                                        {"list", platform::Array{1, QString("a") + QChar('b')}},
                                        {"none", {}}};
    const platform::Dictionary copy = platform::ownCopy(original).toMap();
    EXPECT_EQ(copy, original);
    EXPECT_NE(copy.value("text").toString().constData(), original.value("text").toString().constData());
    EXPECT_NE(copy.constFind("text").key().constData(), original.constFind("text").key().constData());
    EXPECT_NE(copy.value("list").toList().at(1).toString().constData(),
              original.value("list").toList().at(1).toString().constData());
}
