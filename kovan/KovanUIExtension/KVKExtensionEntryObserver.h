#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

/// Whose entry, or panel, it is. What does not apply is empty.
struct KVKEntryPlace
{
    QString group;                 ///< The group's name.
    QString slot;                  ///< The slot's name; on a group's panel that of the slot the entry is for.
    QString label;                 ///< What a slot's panel asks for: "SN".
    std::optional<quint64> system; ///< The index of the system that the slot is.
};

/// An entry that counts as part of the answer.
struct KVKAcceptedEntry
{
    KVKEntryPlace place;
    QString text; ///< As it was written.
};

/// An entry that was refused.
struct KVKRefusedEntry
{
    KVKEntryPlace place; ///< Nothing at all for a text that no field has got.
    QString text;        ///< As it was written; a control character that makes it unreadable by its picture.
    /// Why, in a word. Of a panel's rules: "length", "pattern", "number", "choice", "duplicate" or
    /// "validate"; of the entry itself: "unreadable" (too long for any field, or with a control character),
    /// "late" (its panel was answered already) or "nowhere" (no field or slot waits for it). A host may meet
    /// further words.
    QString kind;
    QString why; ///< Why, in words for the operator.
};

/// A panel that stood before the operator, and stands there no longer.
struct KVKFinishedPanel
{
    enum class How {
        Pressed,   ///< By a button; what was entered is the answer.
        Cancelled, ///< By "Cancel".
        TimedOut,  ///< By its time limit.
        Stopped,   ///< By the host.
        Failed,    ///< Its call has met an error.
    };

    KVKEntryPlace place;
    How how = How::Pressed;
    QString button; ///< The name under which the answer has the button; empty unless it was pressed.
};

/// A panel on which the operator reads why a call was refused.
struct KVKShownError
{
    KVKEntryPlace place;
    QString message;
};

/// Is told what becomes of the operator's entries; see KVKExtensionEntryRelay. What an observer does not care
/// for it leaves as it is.
///
/// Thread: the main thread. An observer returns at once and must not throw: it is called in the midst of the
/// plug-in's work.
class KVKExtensionEntryObserver
{
public:
    virtual ~KVKExtensionEntryObserver() = default;

    virtual void entryAccepted(const KVKAcceptedEntry &) {}
    virtual void entryRefused(const KVKRefusedEntry &) {}
    virtual void panelFinished(const KVKFinishedPanel &) {}
    virtual void errorShown(const KVKShownError &) {}
};
