#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

struct Ending
{
    const char *name;
    bool isCrash;
    QStringList linesBesides;
};

void PrintTo(const Ending &ending, std::ostream *out)
{
    *out << ending.name;
}

constexpr int Patience = 60'000;

class LogEndings : public ::testing::TestWithParam<Ending>
{};

} // namespace

TEST_P(LogEndings, NoLineIsLost)
{
    QProcess program;
    program.start(QStringLiteral(LOG_ENDINGS_PATH), {GetParam().name});
    ASSERT_TRUE(program.waitForFinished(Patience)) << program.errorString().toStdString();
    QStringList expected;
    for (int number = 0; number < 2000; ++number)
        expected.append(QString::number(number));
    expected += GetParam().linesBesides;
    EXPECT_EQ(QString::fromUtf8(program.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts), expected);
    EXPECT_EQ(program.exitStatus() == QProcess::CrashExit || program.exitCode() != 0, GetParam().isCrash);
}

INSTANTIATE_TEST_SUITE_P(All, LogEndings,
                         ::testing::Values(Ending{"return", false, {}}, Ending{"exit", false, {}},
                                           Ending{"exit-on-a-thread", false, {}},
                                           Ending{"static", false, {"last words"}},
                                           Ending{"_Exit", false, {}}, Ending{"abort", true, {}},
                                           Ending{"terminate", true, {}}, Ending{"fault", true, {}},
                                           Ending{"kill-while-the-receiver-waits", true, {}}),
                         [](const ::testing::TestParamInfo<Ending> &each) {
                             return QString(each.param.name).remove('-').remove('_').toStdString();
                         });

TEST(LogToNobody, MakesNoTextAndTellsAWrongFormat)
{
    EXPECT_EQ(QProcess::execute(QStringLiteral(LOG_ENDINGS_PATH), {QStringLiteral("nobody")}), 0);
}
