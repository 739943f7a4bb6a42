#include "station/sound/SoundDesk.h"

#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"

#include <utility>

namespace station {

namespace {

/// Whether whoever scans has to stop and look.
bool isGrave(Sound sound)
{
    return sound == Sound::Refused || sound == Sound::Error;
}

} // namespace

SoundDesk::SoundDesk(SoundSink &sink)
    : m_sink(sink)
{
    connect(&sink, &SoundSink::ended, this, &SoundDesk::ended);
    KVKExtensionEntryRelay::sharedEntryRelay()->addObserver(this);
}

SoundDesk::~SoundDesk()
{
    KVKExtensionEntryRelay::sharedEntryRelay()->removeObserver(this);
}

void SoundDesk::panelFinished(const KVKFinishedPanel &panel)
{
    using How = KVKFinishedPanel::How;
    switch (panel.how) {
    case How::Pressed:
    case How::Cancelled:
        return play(Sound::Finished);
    case How::TimedOut:
    case How::Failed:
        return play(Sound::Error);
    case How::Stopped:
        // Whoever presses "Stop" looks at the window.
        return;
    }
}

void SoundDesk::play(Sound sound)
{
    if (m_heard && isGrave(*m_heard) && !isGrave(sound)) {
        m_waiting = sound;
        return;
    }
    m_waiting.reset();
    m_heard = sound;
    m_sink.play(sound);
}

void SoundDesk::ended()
{
    m_heard.reset();
    if (const std::optional<Sound> next = std::exchange(m_waiting, std::nullopt))
        play(*next);
}

} // namespace station
