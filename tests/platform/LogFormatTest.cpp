#include "platform/LogFormat.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>

using platform::formatMessage;
using platform::LogArguments;

namespace {

struct Row
{
    const char *format;
    LogArguments arguments;
    const char *expected;
};

} // namespace

TEST(LogFormat, ExpandsEachPlaceholder)
{
    const Row table[] = {
        {"nothing to expand", {}, "nothing to expand"},
        {"", {}, ""},
        {"%s", {"text"}, "text"},
        {"%@", {QStringLiteral("text")}, "text"},
        {"%d", {-5}, "-5"},
        {"%ld", {std::numeric_limits<qint64>::min()}, "-9223372036854775808"},
        {"%lu", {std::numeric_limits<quint64>::max()}, "18446744073709551615"},
        {"%lu", {7}, "7"},
        {"%f", {2.5}, "2.500000"},
        {"%f", {-1.0 / 3.0}, "-0.333333"},
        {"%f", {3}, "3.000000"},
        {"%%", {}, "%"},
        {"100%% of %d%%", {5}, "100% of 5%"},
        {"[%s] %@ is at %ld, %f of %d", {"show", "S1", 3, 0.5, 12}, "[show] S1 is at 3, 0.500000 of 12"},
        {"%d%d%d", {1, 2, 3}, "123"},
        {"\xc3\xa9t\xc3\xa9 %s", {"pass\xc3\xa9"}, "\xc3\xa9t\xc3\xa9 pass\xc3\xa9"},
    };
    for (const Row &row : table)
        EXPECT_EQ(formatMessage(row.format, row.arguments), QString::fromUtf8(row.expected)) << row.format;
}

TEST(LogFormat, ATextShowsWhateverItIsGiven)
{
    const Row table[] = {
        {"%@", {nullptr}, "(null)"},
        {"%s", {static_cast<const char *>(nullptr)}, "(null)"},
        {"%@", {platform::Value()}, "(null)"},
        {"%@", {platform::Identifier()}, "(null)"},
        {"%@", {platform::Identifier(QStringLiteral("G1"))}, "G1"},
        {"%@", {QString()}, ""},
        {"%@", {7}, "7"},
        {"%@", {true}, "1"},
        {"%@", {8.0}, "8"},
        {"%@", {8.25}, "8.25"},
        {"%@", {platform::Value(true)}, "1"},
        {"%@", {platform::Array{1, "a"}}, "(1, a)"},
        {"%@", {platform::Dictionary{{"length", 5}, {"key", "SN"}}}, "{key = SN; length = 5}"},
    };
    for (const Row &row : table)
        EXPECT_EQ(formatMessage(row.format, row.arguments), QString::fromUtf8(row.expected)) << row.expected;
}

TEST(LogFormat, ANumberIsReadFromWhatIsGiven)
{
    const Row table[] = {
        {"%d", {"12abc"}, "12"},
        {"%d", {nullptr}, "0"},
        {"%d", {8.9}, "8"},
        {"%ld", {platform::Value(17)}, "17"},
        {"%f", {"2.5V"}, "2.500000"},
        {"%f", {nullptr}, "0.000000"},
        {"%f", {platform::Value(0.125)}, "0.125000"},
    };
    for (const Row &row : table)
        EXPECT_EQ(formatMessage(row.format, row.arguments), QString::fromUtf8(row.expected)) << row.expected;
}

TEST(LogFormat, PlaceholdersInAnArgumentStayAsTheyAre)
{
    EXPECT_EQ(formatMessage("%s, %@", {"%d %@ %1 {}", "%%"}), QStringLiteral("%d %@ %1 {}, %%"));
}

TEST(LogFormat, ArgumentsTooManyAreLeftOut)
{
    EXPECT_EQ(formatMessage("%d", {1, 2}), QStringLiteral("1"));
}

TEST(LogFormat, AFormatThatIsWrongIsRefusedByName)
{
    const Row table[] = {
        {"needs %s", {}, "needs %s"},        {"%d and %d", {1}, "%d and %d"},
        {"unknown %x", {1}, "unknown %x"},   {"unknown %l", {1}, "unknown %l"},
        {"unknown %5d", {1}, "unknown %5d"}, {"ends in %", {1}, "ends in %"},
    };
    for (const Row &row : table) {
        try {
            static_cast<void>(formatMessage(row.format, row.arguments));
            ADD_FAILURE() << "no refusal of " << row.format;
        } catch (const std::invalid_argument &problem) {
            EXPECT_NE(std::string(problem.what()).find(row.expected), std::string::npos) << problem.what();
        }
    }
}
