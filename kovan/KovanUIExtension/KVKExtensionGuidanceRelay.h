#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <mutex>

/// What a panel has for its operator to look at, beside what is drawn on it.
struct KVKGuidance
{
    QString caption;     ///< Whose panel it is, for the operator: "G1 S2".
    QString image;       ///< Path of a picture as the sequence wrote it; empty when there is none.
    QString instruction; ///< Markdown as the sequence wrote it; empty when there is none.
    /// The folder of the sequence whose call has the panel drawn, from which paths are seen; empty when it
    /// has none.
    QString folder;
};

/// One panel's guidance. Two panels never share one: who it belongs to is told by the pointer.
using KVKGuidancePointer = std::shared_ptr<const KVKGuidance>;

/// Passes on what panels have to be looked at. A plug-in says which guidance there is, and which one belongs
/// to the panel that its operator is at; the host shows it where it has the room, or not at all. What may be
/// read, from which folders and of what size, is for the host to decide: neither path nor text was checked.
///
/// Thread: the main thread, except where stated.
class KVKExtensionGuidanceRelay
{
public:
    /// Receives a guidance and whether it begins or ends.
    using Handler = std::function<void(const KVKGuidancePointer &guidance, bool begins)>;
    /// Returns the folder of the sequence whose call runs on the current thread. Called on that call's
    /// thread; must not throw.
    using FolderHandler = std::function<QString()>;

    [[nodiscard]] static KVKExtensionGuidanceRelay *sharedGuidanceRelay();

    /// The folder of the sequence whose call runs on the calling thread; empty where none does, and where the
    /// host knows of no folders. Thread: any.
    [[nodiscard]] QString folderOfCall();

    /// A panel that has guidance can be seen from now on. Requires: not null.
    void offer(const KVKGuidancePointer &guidance);
    /// It cannot be seen any more. One that is current ends being so first.
    void withdraw(const KVKGuidancePointer &guidance);
    /// The operator is at the panel of this guidance, which was offered.
    void beginCurrent(const KVKGuidancePointer &guidance);
    /// The operator is not there any more.
    void endCurrent(const KVKGuidancePointer &guidance);

    /// Host: sets who is told of offers, and who of what is current; empty ones drop it.
    void setOfferHandler(Handler handler);
    void setCurrentHandler(Handler handler);
    /// Thread: any; a call under way may still ask the former one.
    void setFolderHandler(FolderHandler handler);

private:
    Handler m_offerHandler;
    Handler m_currentHandler;
    KVKGuidancePointer m_current; ///< The one that was begun last and has not ended.
    std::mutex m_folderMutex;
    FolderHandler m_folderHandler;
};
