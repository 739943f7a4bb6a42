#pragma once

#include <QString>
#include <QStringList>

namespace soak {

/// What a trial was started with: `--name value` pairs.
class Arguments
{
public:
    Arguments(int argc, char **argv);

    /// The value of a name, or the other one where it was not given. Errors: ends the program for a value
    /// that is no whole number.
    [[nodiscard]] int number(const QString &name, int otherwise) const;
    [[nodiscard]] QString text(const QString &name, const QString &otherwise) const;

private:
    QStringList m_arguments;
};

/// Prepares the process: the pinned environment, and a platform that keeps silent. Before the application.
void prepare(const QString &home);
/// Says on the standard output what was promised, how often it was tried, and how often that failed.
void tell(const QString &promise, qint64 tried, qint64 failed);
/// Prints a line at once.
void say(const QString &line);

} // namespace soak
