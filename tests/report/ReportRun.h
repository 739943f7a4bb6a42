#pragma once

#include <QByteArray>
#include <QStringList>

namespace testsupport {

/// `station report` as its users have it: the program, from outside, where there is no display.
struct ReportRun
{
    explicit ReportRun(const QStringList &arguments, const QString &outputFile = {});

    int status = -1;
    QByteArray output;
    QByteArray errors;
};

} // namespace testsupport
