#pragma once

#include <QProcessEnvironment>
#include <QString>

namespace testsupport {

/// The environment of every program that tries something out: no display, one style, one locale and time
/// zone, a home of its own, and nobody's results server. Before the application is made, and before any
/// thread.
inline void pinEnvironment(const QString &home)
{
    const QByteArray path = home.toUtf8();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_STYLE_OVERRIDE", "fusion");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, path);
    qunsetenv("XDG_STATE_HOME");
    for (const QString &name : QProcessEnvironment::systemEnvironment().keys()) {
        if (name.startsWith(QLatin1String("PG")))
            qunsetenv(name.toUtf8().constData());
    }
}

} // namespace testsupport
