#pragma once

#include "kovan/KovanUIExtension/KVKExtensionEntryObserver.h"
#include "station/sound/SoundSink.h"

#include <optional>

namespace station {

/// Decides what is heard of what happens to the operator's entries (KVKExtensionEntryRelay).
///
/// The newest sound replaces the one before, so that a burst of scans leaves no sounds behind. But an
/// accepted entry or a finished panel never cuts off a refusal or an error: the latest of them is heard after
/// it. Thread: the main thread. Ownership: refers to the sink.
class SoundDesk : public QObject, private KVKExtensionEntryObserver
{
    Q_OBJECT
public:
    explicit SoundDesk(SoundSink &sink);
    ~SoundDesk() override;

private:
    void entryAccepted(const KVKAcceptedEntry &) override { play(Sound::Accepted); }
    void entryRefused(const KVKRefusedEntry &) override { play(Sound::Refused); }
    void panelFinished(const KVKFinishedPanel &panel) override;
    void errorShown(const KVKShownError &) override { play(Sound::Error); }
    void play(Sound sound);
    void ended();

    SoundSink &m_sink;
    std::optional<Sound> m_heard;   ///< What can be heard now.
    std::optional<Sound> m_waiting; ///< What is heard after it.
};

} // namespace station
