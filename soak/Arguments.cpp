#include "soak/Arguments.h"

#include "tests/support/PinnedEnvironment.h"

#include <cstdlib>
#include <iostream>

namespace soak {

Arguments::Arguments(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i)
        m_arguments.append(QString::fromLocal8Bit(argv[i]));
}

QString Arguments::text(const QString &name, const QString &otherwise) const
{
    const qsizetype at = m_arguments.indexOf(QLatin1String("--") + name);
    return at < 0 ? otherwise : m_arguments.value(at + 1);
}

int Arguments::number(const QString &name, int otherwise) const
{
    bool isNumber = false;
    const int number = text(name, QString::number(otherwise)).toInt(&isNumber);
    if (!isNumber) {
        std::cerr << "--" << name.toStdString() << " needs a number" << std::endl;
        std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe): before any thread
    }
    return number;
}

void prepare(const QString &home)
{
    testsupport::pinEnvironment(home);
    // The platform without a display says again and again what it does not do.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

void say(const QString &line)
{
    std::cout << line.toStdString() << std::endl;
}

void tell(const QString &promise, qint64 tried, qint64 failed)
{
    say(QStringLiteral("= %1 | %2 | %3").arg(promise).arg(tried).arg(failed));
}

} // namespace soak
