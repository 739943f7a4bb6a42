#pragma once

#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "platform/WorkQueue.h"
#include "station/instruction/Picture.h"

#include <QHash>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>

namespace station {

/// The pictures of a guidance, its own and those within its text, by the name that the text gives them.
struct LoadedGuidance
{
    Picture image;
    QHash<QString, Picture> inText;
};

/// Reads the pictures of guidances on a thread of its own, one guidance after the other.
///
/// Thread: the main thread. Requires: platform::MainQueue is attached. Ownership: the end waits for the
/// picture that is being read; nothing is told after it.
class GuidanceLoader
{
public:
    /// Told on the main thread when the pictures were read, with or without problems.
    using Listener = std::function<void(const KVKGuidancePointer &guidance, const LoadedGuidance &loaded)>;

    explicit GuidanceLoader(Listener listener);
    ~GuidanceLoader();
    GuidanceLoader(const GuidanceLoader &) = delete;
    GuidanceLoader &operator=(const GuidanceLoader &) = delete;

    /// Reads the pictures, seen from the guidance's own folder and from others. One that is being read
    /// already is not read twice.
    void load(const KVKGuidancePointer &guidance, const QStringList &otherFolders);
    /// Drops what is read for it, also when that comes later.
    void drop(const KVKGuidancePointer &guidance);

private:
    /// Set when nobody waits for the job's result any more.
    using Dropped = std::shared_ptr<std::atomic<bool>>;

    void finished(const KVKGuidancePointer &guidance, const LoadedGuidance &loaded, const Dropped &dropped);

    Listener m_listener;
    QHash<KVKGuidancePointer::element_type *, Dropped> m_jobs;
    std::shared_ptr<bool> m_alive; ///< Expires with this, for results that arrive too late.
    platform::WorkQueue m_queue;   ///< Last, so that what it runs finds the rest.
};

} // namespace station
