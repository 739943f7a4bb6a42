#include "station/scanner/ScanReader.h"

#include <gtest/gtest.h>

using station::ScanReader;

namespace {

/// What goes on of keys of one character each, with "[" where a scan begins, "|" where "\n" was the
/// terminator of one, "(" ")" around what goes on when something else is done, which "!" stands for.
QString read(ScanReader &reader, const QString &keys)
{
    QString result;
    QString held;
    const auto letGo = [&](qsizetype count) {
        result += held.left(count);
        held.remove(0, count);
    };
    for (const QChar key : keys) {
        if (key == '\n' && reader.isInScan()) {
            letGo(reader.end().release);
            held.clear();
            result += '|';
        } else if (key == '\n' || key == '!') {
            result += '(';
            letGo(reader.leave().release);
            result += ')';
        } else {
            held += key;
            const ScanReader::Step step = reader.take(QString(key));
            letGo(step.release);
            if (step.begins) {
                held.clear();
                result += '[';
            }
        }
    }
    return result;
}

struct Example
{
    const char *name;
    const char *prefix;
    const char *suffix;
    const char *keys;
    const char *goesOn;
};

class ScanReaderKeys : public ::testing::TestWithParam<Example>
{};

TEST_P(ScanReaderKeys, GoOn)
{
    ScanReader reader(GetParam().prefix, GetParam().suffix);
    EXPECT_EQ(read(reader, GetParam().keys), QString(GetParam().goesOn));
}

INSTANTIATE_TEST_SUITE_P(
    Each, ScanReaderKeys,
    ::testing::Values(Example{"APrefixIsTakenOff", "##", "", "##AB\n", "[AB|"},
                      Example{"WithoutItNothingIsAScan", "##", "", "AB\n", "AB()"},
                      Example{"HalfAPrefixIsTyped", "##", "", "#A\n", "#A()"},
                      Example{"HalfAPrefixAtTheEndIsTyped", "##", "", "A#\n", "A(#)"},
                      Example{"AFailedBeginningMayHoldAnother", "##A", "", "###AB\n", "#[B|"},
                      Example{"ThePrefixWithinAScanIsText", "##", "", "##A##B\n", "[A##B|"},
                      Example{"EachScanBeginsAnew", "##", "", "##A\nB\n##C\n", "[A|B()[C|"},
                      Example{"ASuffixIsTakenOff", "", "%%", "AB%%\n", "AB|"},
                      Example{"HalfASuffixIsText", "", "%%", "AB%\n", "AB%|"},
                      Example{"ASuffixWithinIsText", "", "%%", "A%%B%%\n", "A%%B|"},
                      Example{"ASuffixThatIsLongerByOne", "", "%%", "A%%%\n", "A%|"},
                      Example{"AMissingSuffixIsNoFault", "##", "%%", "##A\n", "[A|"},
                      Example{"BothAreTakenOff", "##", "%%", "##A%%\n", "[A|"},
                      Example{"OutsideAScanTheSuffixIsTyped", "##", "%%", "A%%\n", "A%%()"},
                      Example{"SomethingElseGivesTheKeysBack", "##", "%%", "#!##A%!B\n", "(#)[A(%)B()"}),
    [](const ::testing::TestParamInfo<Example> &example) { return example.param.name; });

TEST(ScanReader, AScanWithoutATextIsEmpty)
{
    ScanReader reader("##", "%%");
    EXPECT_EQ(read(reader, "##"), "[");
    EXPECT_TRUE(reader.end().isEmpty);
    EXPECT_EQ(read(reader, "##%%"), "[");
    EXPECT_TRUE(reader.end().isEmpty);
    EXPECT_EQ(read(reader, "##%"), "[");
    EXPECT_FALSE(reader.end().isEmpty) << "half a suffix is a text";
}

TEST(ScanReader, AKeyThatWorksAControlBeginsNoEntry)
{
    ScanReader reader("", "");
    EXPECT_EQ(reader.take(" ", false).release, 1);
    EXPECT_FALSE(reader.isInScan());
    EXPECT_EQ(reader.take("A").release, 1);
    EXPECT_TRUE(reader.isInScan());
}

TEST(ScanReader, WantsWhatMayBeTheBeginningAndAllOfAScan)
{
    ScanReader reader("\x02#", "");
    EXPECT_TRUE(reader.wants("\x02"));
    EXPECT_FALSE(reader.wants("#"));
    static_cast<void>(reader.take("\x02"));
    EXPECT_TRUE(reader.wants("#"));
    EXPECT_FALSE(reader.wants("\x02"));
    static_cast<void>(reader.take("#"));
    EXPECT_TRUE(reader.wants("\x04"));
}

} // namespace
