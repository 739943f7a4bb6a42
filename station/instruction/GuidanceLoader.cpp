#include "station/instruction/GuidanceLoader.h"

#include "platform/MainQueue.h"
#include "station/instruction/InstructionDocument.h"

#include <QImageReader>

#include <utility>

namespace station {
namespace {

LoadedGuidance read(const KVKGuidance &guidance, const QStringList &folders, const std::atomic<bool> &dropped)
{
    LoadedGuidance loaded;
    if (!guidance.image.isEmpty())
        loaded.image = readPicture(guidance.image, folders);
    QStringList names = picturesIn(guidance.instruction);
    for (qsizetype i = 0; i < names.size() && !dropped; ++i) {
        loaded.inText.insert(names.at(i),
                             i < MostPicturesInText
                                 ? readPicture(names.at(i), folders)
                                 : Picture{{}, QStringLiteral("there are too many pictures in the text")});
    }
    return loaded;
}

} // namespace

GuidanceLoader::GuidanceLoader(Listener listener)
    : m_listener(std::move(listener))
    , m_alive(std::make_shared<bool>(true))
{
    QImageReader::setAllocationLimit(Picture::MostMegabytesDecoded);
}

GuidanceLoader::~GuidanceLoader()
{
    for (const Dropped &dropped : std::as_const(m_jobs))
        *dropped = true;
    m_queue.end();
}

void GuidanceLoader::load(const KVKGuidancePointer &guidance, const QStringList &otherFolders)
{
    if (m_jobs.contains(guidance.get()))
        return;
    const auto dropped = std::make_shared<std::atomic<bool>>(false);
    m_jobs.insert(guidance.get(), dropped);
    const QStringList folders = QStringList{guidance->folder} + otherFolders;
    // One at a time: what is decoded may take hundreds of megabytes while it is.
    m_queue.async([this, guidance, folders, dropped, alive = std::weak_ptr<bool>(m_alive)] {
        if (*dropped)
            return;
        const LoadedGuidance loaded = read(*guidance, folders, *dropped);
        platform::MainQueue::async([this, guidance, loaded, dropped, alive] {
            if (!alive.expired())
                finished(guidance, loaded, dropped);
        });
    });
}

void GuidanceLoader::drop(const KVKGuidancePointer &guidance)
{
    if (const Dropped dropped = m_jobs.take(guidance.get()))
        *dropped = true;
}

void GuidanceLoader::finished(const KVKGuidancePointer &guidance, const LoadedGuidance &loaded,
                              const Dropped &dropped)
{
    if (*dropped)
        return;
    m_jobs.remove(guidance.get());
    m_listener(guidance, loaded);
}

} // namespace station
