#include "platform/MainQueue.h"

#include <QApplication>

#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    platform::MainQueue::attach();
    benchmark::RunSpecifiedBenchmarks();
    platform::MainQueue::detach();
    return EXIT_SUCCESS;
}
