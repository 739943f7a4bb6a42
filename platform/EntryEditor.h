#pragma once

#include "platform/RefusedEntry.h"

#include <QLineEdit>
#include <QTimer>

#include <optional>

class QKeyEvent;

namespace platform {

/// The line editor inside an editable field: it knows where an entry begins and ends, and refuses one that
/// cannot be taken.
///
/// An entry begins with the first character, paste or deletion by a person or scanner. One that gets longer
/// than the maximum, or holds a control character other than GS (U+001D), is refused whole: the text goes,
/// and what else is typed goes with it, until the entry ends with Return, or is given up by Backspace,
/// Delete, Escape or by leaving the field. GS is shown as U+241D (the picture of a group separator); a U+241D
/// that was typed, pasted or set counts as GS.
///
/// The characters of a long entry are gathered and laid out together, at most as often as a screen shows
/// them: a line editor lays its whole text out anew for each change.
/// Thread: the main thread.
class EntryEditor : public QLineEdit
{
    Q_OBJECT
public:
    /// The maximum length is in UTF-16 units.
    EntryEditor(qsizetype maximumLength, QWidget *parent);

    /// Whether an event of the editor says that somebody has left it; going to another window is not leaving.
    [[nodiscard]] static bool leavesField(const QEvent &event);

    /// What is written, with GS as GS.
    [[nodiscard]] QString entry() const;
    /// Replaces what is written; a begun entry is forgotten, refused or not.
    void setEntry(const QString &text);
    void selectEntry();
    [[nodiscard]] QString selectedEntry();
    /// Lays out what was gathered. Whoever looks at the QLineEdit itself calls this before.
    void flush();

    /// Whether something was typed that has not been ended, refused text included.
    [[nodiscard]] bool hasBegun() const { return m_begun; }
    /// Ends a begun entry, which is still written, unless it is refused: then that is returned.
    std::optional<RefusedEntry> end();

signals:
    void begun();
    /// Sent once for an entry, when it turns out that it cannot be taken.
    void refused();
    /// Sent after the person has deleted all of the entry, or left a refused one; end() was not called yet.
    void givenUp();

protected:
    bool event(QEvent *event) override;

private:
    bool takesKey(const QKeyEvent &event);
    void type(const QString &text);
    void checkEdited();
    void begin();
    void refuse(const QString &rest, const QString &why);
    void refuseLength(const QString &rest);
    void refuseControl(char16_t control, const QString &rest);
    void addRefused(const QString &text);

    qsizetype m_maximumLength;
    QString m_gathered; ///< Stands behind the text of the line editor.
    QTimer m_flushTimer;
    std::optional<RefusedEntry> m_refusal; ///< The begun entry, when it cannot be taken.
    int m_eventDepth = 0;
    bool m_begun = false;
    bool m_edited = false; ///< The line editor was told to change its text by a person.
};

} // namespace platform
