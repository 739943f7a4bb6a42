#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

#include <functional>
#include <mutex>

/// What a call of a plug-in's function waits for.
struct KVKCallWait
{
    /// In words for the status table: "its turn", "the operator". Empty when it waits no longer.
    QString what;
    /// The systems that the call's panel is for, so that their rows can be marked.
    QList<quint64> systems;
};

/// Passes what plug-ins have to say about the station's status on to the host: which rows of the status table
/// are to be highlighted, what a call waits for, lines for the operator, and how far a loop is.
///
/// Thread: the main thread, except where stated.
class KVKExtensionStatusRelay
{
public:
    /// Receives the system index and whether it is to be highlighted.
    using Handler = std::function<void(quint64 systemIndex, bool highlighted)>;
    /// Receives what the call on the current thread waits for. Called on that call's thread; must not throw.
    using WaitHandler = std::function<void(const KVKCallWait &wait)>;
    /// Receives a line for the operator.
    using MessageHandler = std::function<void(const QString &message)>;
    /// Receives how many passes there are to be, and how many each group has finished, in the groups' order.
    using PassHandler = std::function<void(qint64 maximum, const QList<qint64> &finished)>;

    [[nodiscard]] static KVKExtensionStatusRelay *sharedStatusRelay();

    void startHighlightingForSystemIndex(quint64 systemIndex);
    void stopHighlightingForSystemIndex(quint64 systemIndex);

    /// Tells what the call that runs on the calling thread waits for from now on. Thread: any.
    void callWaits(const KVKCallWait &wait);
    /// Asks the host to show a line to the operator, in its status bar or where it has one.
    void showMessage(const QString &message);
    /// Tells how many passes the station is to run (below 2: no loop), and how many of them each group has
    /// finished; whenever either changes.
    void showPasses(qint64 maximum, const QList<qint64> &finished);

    /// Host: sets who follows the requests; an empty one drops them.
    void setHandler(Handler handler);
    /// Thread: any; a call under way may still be told to the former one.
    void setWaitHandler(WaitHandler handler);
    void setMessageHandler(MessageHandler handler);
    void setPassHandler(PassHandler handler);

private:
    void pass(quint64 systemIndex, bool highlighted) const;

    Handler m_handler;
    MessageHandler m_messageHandler;
    PassHandler m_passHandler;
    std::mutex m_waitMutex;
    WaitHandler m_waitHandler;
};
