#include "platform/MainQueue.h"
#include "tests/support/LogTrap.h"

#include <QApplication>
#include <QFont>
#include <QLocale>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// The environment of every test: no display, one style, one font, one locale and time zone, a home of its
/// own, and nobody's results server.
void pinEnvironment(const QTemporaryDir &home)
{
    const QByteArray path = home.path().toUtf8();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_STYLE_OVERRIDE", "fusion");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    qputenv("HOME", path);
    qputenv("XDG_CONFIG_HOME", path);
    qputenv("XDG_RUNTIME_DIR", path);
    qunsetenv("XDG_STATE_HOME");
    for (const QString &name : QProcessEnvironment::systemEnvironment().keys()) {
        if (name.startsWith(QLatin1String("PG")))
            qunsetenv(name.toUtf8().constData());
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    pinEnvironment(home);
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
