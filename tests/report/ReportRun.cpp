#include "tests/report/ReportRun.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace testsupport {

ReportRun::ReportRun(const QStringList &arguments, const QString &outputFile)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(name);
    process.setProcessEnvironment(environment);
    if (!outputFile.isEmpty())
        process.setStandardOutputFile(outputFile);
    process.start(STATION_PATH, QStringList{"report"} + arguments);
    if (!process.waitForFinished(120'000) || process.exitStatus() != QProcess::NormalExit) {
        ADD_FAILURE() << "the program did not end in order";
        return;
    }
    status = process.exitCode();
    output = process.readAllStandardOutput();
    errors = process.readAllStandardError();
}

} // namespace testsupport
