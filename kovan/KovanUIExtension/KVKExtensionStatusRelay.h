#pragma once

#include <QtGlobal>

#include <functional>

/// Passes requests of plug-ins about the status table on to the host.
///
/// Thread: the main thread.
class KVKExtensionStatusRelay
{
public:
    /// Receives the system index and whether it is to be highlighted.
    using Handler = std::function<void(quint64 systemIndex, bool highlighted)>;

    [[nodiscard]] static KVKExtensionStatusRelay *sharedStatusRelay();

    void startHighlightingForSystemIndex(quint64 systemIndex);
    void stopHighlightingForSystemIndex(quint64 systemIndex);

    /// Host: sets who follows the requests; an empty one drops them.
    void setHandler(Handler handler);

private:
    void pass(quint64 systemIndex, bool highlighted) const;

    Handler m_handler;
};
