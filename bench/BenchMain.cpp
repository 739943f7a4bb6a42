#include "platform/MainQueue.h"

#include <QApplication>

#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    // The platform without a display says again and again what it does not do.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    platform::MainQueue::attach();
    benchmark::RunSpecifiedBenchmarks();
    platform::MainQueue::detach();
    return EXIT_SUCCESS;
}
