#include "station/sound/SoundPlayer.h"

#include "station/sound/SoundDevice.h"
#include "station/sound/SoundFile.h"

#include <chrono>
#include <vector>

namespace station {

namespace {

/// A sound server that does not answer must not keep the program from ending.
constexpr std::chrono::milliseconds LongestWaitAtTheEnd{500};

} // namespace

SoundPlayer::SoundPlayer(int volume)
    : m_thread(std::make_unique<QThread>())
    , m_device(std::make_shared<SoundDevice>(volume))
{
    m_length.setSingleShot(true);
    m_length.setTimerType(Qt::PreciseTimer);
    connect(&m_length, &QTimer::timeout, this, &SoundSink::ended);
    m_thread->setObjectName(QStringLiteral("sounds"));
    m_device->moveToThread(m_thread.get());
    m_thread->start(QThread::LowPriority);
    // In the background, so that the first sound is not late.
    m_device->prepare();
}

SoundPlayer::~SoundPlayer()
{
    m_device->close();
    if (m_thread->wait(QDeadlineTimer(LongestWaitAtTheEnd)))
        return;
    // The thread is inside the server's library, which the process takes along when it ends.
    // Both stay where they can be seen, since they are neither lost nor anybody's any more.
    struct Left
    {
        QThread *thread;
        std::shared_ptr<SoundDevice> device;
    };
    static auto &left = *new std::vector<Left>;
    left.push_back({m_thread.release(), m_device});
}

void SoundPlayer::play(Sound sound)
{
    m_device->play(sound);
    m_length.start(SoundFile::of(sound).length());
}

} // namespace station
