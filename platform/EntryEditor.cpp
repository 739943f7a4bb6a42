#include "platform/EntryEditor.h"

#include "platform/KeyRouting.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

/// The picture of the control character, which itself has no shape that could be seen.
constexpr char16_t ShownGroupSeparator = 0x241d;
/// Up to here each character is laid out as it comes.
constexpr qsizetype ShortEntry = 256;
/// A long text is laid out anew with each change; a scanner sends several characters in this time.
constexpr int MillisecondsBetweenLayouts = 20;

QString shown(QString text)
{
    return text.replace(QChar(keys::GroupSeparator), QChar(ShownGroupSeparator));
}

QString meant(QString text)
{
    return text.replace(QChar(ShownGroupSeparator), QChar(keys::GroupSeparator));
}

/// Deleting the text or Escape gives a refused entry up.
bool givesUp(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete || event.key() == Qt::Key_Escape;
}

/// Events that neither look at the text nor change it; all others find it whole.
bool leavesTextAlone(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress: // looked at closely
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Paint:
    case QEvent::Timer:
        return true;
    default:
        return false;
    }
}

} // namespace

EntryEditor::EntryEditor(qsizetype maximumLength, QWidget *parent)
    : QLineEdit(parent)
    , m_maximumLength(maximumLength)
{
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(MillisecondsBetweenLayouts);
    connect(&m_flushTimer, &QTimer::timeout, this, &EntryEditor::flush);
    connect(this, &QLineEdit::textEdited, this, [this] { m_edited = true; });
}

bool EntryEditor::leavesField(const QEvent &event)
{
    if (event.type() != QEvent::FocusOut)
        return false;
    const Qt::FocusReason reason = static_cast<const QFocusEvent &>(event).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

QString EntryEditor::entry() const
{
    return meant(text() + m_gathered);
}

void EntryEditor::setEntry(const QString &text)
{
    m_gathered.clear();
    m_refusal.reset();
    m_begun = false;
    setText(shown(text));
}

void EntryEditor::selectEntry()
{
    flush();
    selectAll();
}

QString EntryEditor::selectedEntry()
{
    flush();
    return meant(selectedText());
}

void EntryEditor::flush()
{
    if (m_gathered.isEmpty())
        return;
    m_flushTimer.stop();
    insert(std::exchange(m_gathered, QString()));
    m_edited = false;
}

std::optional<RefusedEntry> EntryEditor::end()
{
    flush();
    m_begun = false;
    return std::exchange(m_refusal, std::nullopt);
}

bool EntryEditor::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress && takesKey(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    // The line editor would paint its whole text for the cursor's sake.
    if (event->type() == QEvent::KeyRelease && !m_gathered.isEmpty())
        return true;
    if (!leavesTextAlone(*event))
        flush();
    // Whoever hears that the entry was given up may take the editor away.
    const QPointer<EntryEditor> self(this);
    ++m_eventDepth;
    const bool used = QLineEdit::event(event);
    if (!self)
        return used;
    // The line editor sends itself events while it changes its text.
    if (--m_eventDepth > 0)
        return used;
    if (m_refusal && leavesField(*event))
        Q_EMIT givenUp();
    else if (std::exchange(m_edited, false))
        checkEdited();
    return used;
}

/// Characters, and what is wrong in a scan. Nothing may be touched after true.
bool EntryEditor::takesKey(const QKeyEvent &event)
{
    if (const std::optional<char16_t> control = keys::scannedControl(*this, event)) {
        refuseControl(*control, QString(QChar(*control)));
        return true;
    }
    if (keys::isCharacter(event)) {
        type(shown(event.text()));
        return true;
    }
    if (m_refusal && givesUp(event)) {
        Q_EMIT givenUp();
        return true;
    }
    flush();
    return false;
}

void EntryEditor::type(const QString &text)
{
    if (m_refusal) {
        addRefused(text);
        return;
    }
    begin();
    const qsizetype written = QLineEdit::text().size() - selectedText().size() + m_gathered.size();
    if (written + text.size() > m_maximumLength) {
        refuseLength(text);
        return;
    }
    if (!m_gathered.isEmpty() || (written >= ShortEntry && cursorPosition() == written)) {
        m_gathered += text;
        if (!m_flushTimer.isActive())
            m_flushTimer.start();
        return;
    }
    insert(text);
    m_edited = false;
}

/// Looks at a text that was pasted, dropped, deleted, composed or restored.
void EntryEditor::checkEdited()
{
    if (m_refusal) {
        clear();
        m_edited = false;
        return;
    }
    const QString edited = text();
    if (edited.isEmpty()) {
        if (m_begun)
            Q_EMIT givenUp();
        return;
    }
    begin();
    const QString written = shown(edited);
    const auto control = std::find_if(written.begin(), written.end(), [](QChar character) {
        return character.category() == QChar::Other_Control;
    });
    if (control != written.end()) {
        refuseControl(control->unicode(), {});
    } else if (written.size() > m_maximumLength) {
        refuseLength({});
    } else if (written != edited) {
        const int position = cursorPosition();
        setText(written);
        setCursorPosition(position);
    }
}

void EntryEditor::begin()
{
    if (std::exchange(m_begun, true))
        return;
    Q_EMIT begun();
}

void EntryEditor::refuse(const QString &rest, const QString &why)
{
    if (m_refusal) {
        addRefused(rest);
        return;
    }
    m_refusal = RefusedEntry{{}, why};
    addRefused(entry() + rest);
    m_begun = true;
    m_gathered.clear();
    clear();
    m_edited = false;
    Q_EMIT refused();
}

void EntryEditor::refuseLength(const QString &rest)
{
    refuse(rest, QStringLiteral("longer than %1 characters").arg(m_maximumLength));
}

void EntryEditor::refuseControl(char16_t control, const QString &rest)
{
    refuse(rest, QStringLiteral("control character U+%1")
                     .arg(QString::number(control, 16).toUpper().rightJustified(4, QLatin1Char('0'))));
}

/// Keeps what is refused, so that it can be told.
void EntryEditor::addRefused(const QString &text)
{
    constexpr char16_t FirstPicture = 0x2400;
    constexpr char16_t FirstNoControl = 0x20;
    for (const QChar character : text) {
        // What is told of a refused entry is no longer than an entry could be.
        if (m_refusal->text.size() >= m_maximumLength)
            return;
        const char16_t unit = character.unicode();
        m_refusal->text += unit < FirstNoControl ? QChar(char16_t(FirstPicture + unit)) : character;
    }
}

} // namespace platform
