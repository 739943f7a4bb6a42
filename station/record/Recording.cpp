#include "station/record/Recording.h"

#include "station/base/StationError.h"
#include "station/window/StationWindow.h"

#include <QFileInfo>
#include <QTextStream>

namespace station {

Recording::Recording(const QString &path)
{
    if (path.isEmpty())
        return;
    try {
        m_file.emplace(path);
    } catch (const StationError &problem) {
        throw StationError(QStringLiteral("--record: ") + problem.text());
    }
    // Looked at when it is locked: nobody else writes into it any more.
    if (QFileInfo(path).size() > 0)
        throw StationError(QStringLiteral("--record: %1: is there already and is not empty").arg(path));
    m_recorder = std::make_unique<Recorder>([this](const QString &line) { write(line); });
}

void Recording::start(const QString &station, StationWindow &window, platform::View *root)
{
    if (!m_recorder)
        return;
    m_recorder->start(station, root);
    QObject::connect(&window, &StationWindow::stopRequested, m_recorder.get(), &Recorder::stopPressed);
}

void Recording::runBegins(const QString &badge)
{
    if (m_recorder)
        m_recorder->runBegins(badge);
}

void Recording::runStops()
{
    if (m_recorder)
        m_recorder->runStops();
}

void Recording::runEnds()
{
    if (m_recorder)
        m_recorder->runEnds();
}

void Recording::write(const QString &line)
{
    if (m_failed)
        return;
    const QString why = m_file->append(line.toUtf8());
    if (why.isEmpty())
        return;
    m_failed = true;
    QTextStream(stderr) << QStringLiteral("station: --record: %1: %2").arg(m_file->path(), why) << Qt::endl;
}

} // namespace station
