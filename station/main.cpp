#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "platform/MainQueue.h"
#include "station/CommandLine.h"
#include "station/FileRights.h"
#include "station/QtMessages.h"
#include "station/Station.h"
#include "station/base/StationError.h"
#include "station/check/CheckCommand.h"
#include "station/report/ReportCommand.h"
#include "station/starter/NewCommand.h"

#include <QApplication>
#include <QIcon>
#include <QTextStream>

#include <csignal>
#include <cstdio>

namespace {

constexpr int CannotStart = 2;

/// The arguments before there is an application, which may need a display.
QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

void chooseDisplay(const station::CommandLine &line)
{
    if (line.headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return;
    }
#ifdef Q_OS_LINUX
    const bool hasDisplay = qEnvironmentVariableIsSet("DISPLAY") ||
                            qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                            qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (!hasDisplay)
        throw station::StationError(QStringLiteral("there is no display; run it with --headless"));
#endif
}

void takeNoNotice(int) {}

/// Makes the program independent of what it was started from: nobody types what a script, or a child process
/// of one, would wait for; and a reader that goes away (of a pipe to such a child, of what is printed) is an
/// error of the write and not the end of all. A handler, since children would inherit that the signal is
/// ignored.
void standAlone()
{
    static_cast<void>(!std::freopen("/dev/null", "r", stdin));
    std::signal(SIGPIPE, takeNoNotice);
}

int runStation(const station::CommandLine &line, int argc, char **argv)
{
    chooseDisplay(line);
    station::routeQtMessages();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("station"));
    // The desktop entry, which gives the window its name and picture in a desktop's lists.
    QApplication::setDesktopFileName(QStringLiteral("interactive-station"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("interactive-station")));
    QApplication::setStyle(QStringLiteral("fusion"));
    platform::MainQueue::attach();
    struct Detach
    {
        ~Detach() { platform::MainQueue::detach(); }
    } const detach;
    return station::Station(line).run();
}

/// Looks at files as the station would, without a display, since there is nothing to show.
int checkFilesOnly(const QStringList &arguments, int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    station::routeQtMessages();
    const QApplication application(argc, argv);
    return station::runCheck(arguments);
}

int reportOnResults(const QStringList &arguments, int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return station::runReport(arguments);
}

int runProgram(int argc, char **argv)
{
    const QStringList arguments = argumentsOf(argc, argv);
    const QString command = arguments.value(1);
    if (command == QLatin1String("check"))
        return checkFilesOnly(arguments.mid(1), argc, argv);
    if (command == QLatin1String("new"))
        return station::runNew(arguments.mid(1));
    if (command == QLatin1String("report"))
        return reportOnResults(arguments.mid(1), argc, argv);
    const auto line = station::readCommandLine(arguments);
    return line ? runStation(*line, argc, argv) : EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        standAlone();
        station::makeFilesPrivate();
        return runProgram(argc, argv);
    } catch (...) {
        QTextStream(stderr) << "station: " << KVKTextOfException(std::current_exception()) << Qt::endl;
        return CannotStart;
    }
}
