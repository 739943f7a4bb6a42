#include "fuzz/Surroundings.h"

#include "platform/MainQueue.h"
#include "tests/support/PinnedEnvironment.h"

#include <QDir>
#include <QFont>
#include <QLocale>

namespace fuzz {

namespace {

/// In memory where there is such a place: some targets write a file for each input.
QString place()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
           QStringLiteral("/station-fuzz-XXXXXX");
}

/// Many names of files that are tried cannot be opened, and Qt would say so each time.
void sayNothing(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

Surroundings::Environment::Environment()
    : home(place())
{
    testsupport::pinEnvironment(home.path());
    qInstallMessageHandler(sayNothing);
}

Surroundings::Surroundings(int &argc, char **argv)
    : m_application(argc, argv)
{
    QLocale::setDefault(QLocale::c());
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    platform::MainQueue::attach();
}

Surroundings::~Surroundings()
{
    platform::MainQueue::detach();
}

QString Surroundings::folder()
{
    return QDir::homePath();
}

} // namespace fuzz
