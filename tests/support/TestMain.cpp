#include "platform/MainQueue.h"
#include "tests/support/LogTrap.h"
#include "tests/support/PinnedEnvironment.h"

#include <QApplication>
#include <QFont>
#include <QLocale>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    testsupport::pinEnvironment(home.path());
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    platform::MainQueue::attach();
    testsupport::installLogTrap();
    const int result = RUN_ALL_TESTS();
    platform::MainQueue::detach();
    return result;
}
