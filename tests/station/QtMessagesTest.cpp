#include "station/QtMessages.h"

#include "tests/support/LogRecorder.h"
#include "tests/support/Printing.h"

#include <QtGlobal>

#include <gtest/gtest.h>

namespace {

/// What Qt itself says, routed as the station does.
class QtMessagesTest : public ::testing::Test
{
protected:
    QtMessagesTest() { station::routeQtMessages(); }
    ~QtMessagesTest() override { qInstallMessageHandler(nullptr); }
};

TEST_F(QtMessagesTest, GoToTheSystemLogAtTheirLevelAndNotToTheProxy)
{
    const testsupport::LogRecorder log;
    testing::internal::CaptureStderr();
    qDebug("a detail");
    qInfo("a note with {} and %%s");
    qCritical("a failure");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    const std::vector<testsupport::LogRecorder::Line> expected{
        {KVKLogLevel::Debug, "a detail"},
        {KVKLogLevel::Default, "a note with {} and %s"},
        {KVKLogLevel::Error, "a failure"}};
    EXPECT_TRUE(log.systemLines() == expected);
    EXPECT_TRUE(log.proxyLines().empty());
}

TEST_F(QtMessagesTest, AMessageThatEndsTheProgramIsOneLineAndStatusTwo)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(qFatal("no display\nand more about it"), ::testing::ExitedWithCode(2),
                "^station: no display\n$");
}

} // namespace
