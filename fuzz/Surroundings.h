#pragma once

#include <QApplication>
#include <QString>
#include <QTemporaryDir>

namespace fuzz {

/// What a target finds: an application without a display, the main queue, a home and a folder of its own, one
/// style, font, locale and time zone.
///
/// Thread: the main thread; made once.
class Surroundings
{
public:
    /// Requires: the arguments outlive it.
    Surroundings(int &argc, char **argv);
    ~Surroundings();
    Surroundings(const Surroundings &) = delete;
    Surroundings &operator=(const Surroundings &) = delete;

    /// A folder for the files that a target writes, gone with this object.
    [[nodiscard]] static QString folder();

private:
    /// Sets the environment before the application reads it.
    struct Environment
    {
        Environment();
        QTemporaryDir home;
    };
    Environment m_environment;
    QApplication m_application;
};

} // namespace fuzz
