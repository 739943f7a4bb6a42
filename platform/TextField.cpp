#include "platform/TextField.h"

#include "platform/ChoiceList.h"
#include "platform/EntryEditor.h"
#include "platform/KeyRouting.h"
#include "platform/ScrollView.h"
#include "platform/TextLines.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QSet>

namespace platform {

namespace {

/// A key that writes or ends an entry; not one that moves the focus, is a shortcut or only modifies others.
bool isEntryKey(const QKeyEvent &event)
{
    return keys::isReturn(event) || event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete ||
           keys::isText(event);
}

} // namespace

TextField::TextField(QWidget *parent)
    : Control(parent)
    , m_cell(std::make_unique<TextFieldCell>())
{
    m_cell->setFont(font());
    keys::watch();
}

TextField::TextField(const Rect &frame)
    : TextField(static_cast<QWidget *>(nullptr))
{
    setFrame(frame);
}

TextField::~TextField()
{
    // The window holds it, so that it can reach beyond the field.
    delete m_list;
}

QString TextField::stringValue() const
{
    return m_editor ? m_editor->entry() : m_text;
}

bool TextField::hasBegunEntry() const
{
    // Whoever looks through the list is about to choose.
    return m_editor && (m_editor->hasBegun() || isListOpen());
}

void TextField::setStringValue(const QString &text)
{
    // Asked before the text is set, which ends an entry that was begun.
    const bool endsEntry = hasBegunEntry();
    foldList();
    if (m_editor)
        m_editor->setEntry(text);
    else
        m_text = text;
    if (!text.isEmpty())
        unmarkRefused();
    textChanged();
    if (endsEntry)
        Q_EMIT entryEnded();
}

void TextField::setEditable(bool editable)
{
    if (editable == isEditable())
        return;
    if (editable) {
        makeEditor();
        textChanged();
        return;
    }
    const QPointer<TextField> self(this);
    giveUpEntry();
    if (!self || !m_editor)
        return;
    dropEditor();
    textChanged();
}

void TextField::makeEditor()
{
    const bool hadFocus = isFirstResponder();
    m_editor = new EntryEditor(MaximumEntryLength, this);
    m_editor->setFrame(false);
    m_editor->setContextMenuPolicy(Qt::NoContextMenu);
    m_editor->setEntry(m_text);
    m_editor->setAttribute(Qt::WA_TransparentForMouseEvents, !editorTakesMouse());
    // A press of the mouse is the field's business; Tab reaches the editor.
    m_editor->setFocusPolicy(editorTakesMouse() ? Qt::StrongFocus : Qt::TabFocus);
    connect(m_editor, &EntryEditor::begun, this, &TextField::unmarkRefused);
    connect(m_editor, &EntryEditor::refused, this, &TextField::markRefused);
    connect(m_editor, &EntryEditor::givenUp, this, &TextField::giveUpEntry);
    connect(m_editor, &QLineEdit::textChanged, this, &TextField::narrowList);
    m_editor->setPlaceholderText(m_placeholder);
    setSpokenName(accessibleName());
    showDescription();
    // Before the editor's own handling: Return and Tab are the field's business.
    m_editor->installEventFilter(this);
    styleEditor();
    layout();
    m_editor->show();
    if (hadFocus)
        becomeFirstResponder();
}

/// Later than at once, since it may be an action of the editor that makes the field read-only.
void TextField::dropEditor()
{
    giveUpFocus();
    foldList();
    m_text = m_editor->entry();
    m_editor->hide();
    m_editor->disconnect(this);
    m_editor->deleteLater();
    m_editor = nullptr;
}

/// Return ends the entry; what is still there afterwards is selected, so that the next entry replaces it.
void TextField::endEntry()
{
    const QPointer<TextField> self(this);
    foldList();
    // What is still being composed belongs to the entry.
    QGuiApplication::inputMethod()->commit();
    if (const std::optional<RefusedEntry> refused = m_editor->end())
        tellRefusal(*refused);
    else
        sendAction();
    if (!self)
        return;
    if (isFirstResponder() && m_editor && !hasBegunEntry())
        m_editor->selectEntry();
    Q_EMIT entryEnded();
}

void TextField::giveUpEntry()
{
    if (!hasBegunEntry())
        return;
    foldList();
    const QPointer<TextField> self(this);
    if (const std::optional<RefusedEntry> refused = m_editor->end())
        tellRefusal(*refused);
    if (self)
        Q_EMIT entryEnded();
}

void TextField::tellRefusal(const RefusedEntry &refused)
{
    // A copy, since the handler may take the field away.
    const RefusalHandler handler = m_refusalHandler;
    if (handler)
        handler(this, refused);
}

void TextField::wasTakenAway()
{
    giveUpEntry();
}

void TextField::markRefused()
{
    if (m_colorBeforeRefusal)
        return;
    m_colorBeforeRefusal = m_backgroundColor;
    m_backgroundColor = Color::standardRed();
    foldList();
    styleEditor();
    update();
}

void TextField::unmarkRefused()
{
    if (m_colorBeforeRefusal)
        setBackgroundColor(*m_colorBeforeRefusal);
}

bool TextField::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_editor)
        return Control::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        return takesEditorKey(*static_cast<QKeyEvent *>(event));
    if (event->type() == QEvent::FocusOut && EntryEditor::leavesField(*event))
        foldList();
    // The field shows by its border that it has the focus.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    if (isTabbedTo(*event))
        comeIntoSight();
    return Control::eventFilter(watched, event);
}

void TextField::comeIntoSight()
{
    ScrollView::reveal(this);
}

/// Return and Tab, before the editor sees them. Nothing may be touched after true: an action may have taken
/// the field away.
bool TextField::takesEditorKey(QKeyEvent &event)
{
    const bool endsEntry = keys::isReturn(event);
    if (!endsEntry && !listTakesKey(event) && !takesTab(event))
        return false;
    event.accept();
    if (endsEntry) {
        takeChosen();
        endEntry();
    }
    return true;
}

void TextField::setBordered(bool bordered)
{
    m_bordered = bordered;
    textChanged();
}

void TextField::setDrawsBackground(bool draws)
{
    m_drawsBackground = draws;
    update();
}

void TextField::setBackgroundColor(const Color &color)
{
    m_backgroundColor = color;
    m_colorBeforeRefusal.reset();
    styleEditor();
    update();
}

void TextField::setTextColor(const Color &color)
{
    m_textColor = color;
    styleEditor();
    update();
}

void TextField::setAlignment(TextAlignment alignment)
{
    m_alignment = alignment;
    styleEditor();
    update();
}

void TextField::setMaximumNumberOfLines(int lines)
{
    m_maximumNumberOfLines = lines;
    textChanged();
}

void TextField::setCell(std::unique_ptr<TextFieldCell> cell)
{
    m_cell = std::move(cell);
    m_cell->setFont(font());
    layout();
}

void TextField::fontChanged()
{
    m_cell->setFont(font());
    styleEditor();
    layout();
}

void TextField::selectText()
{
    if (becomeFirstResponder() && m_editor)
        m_editor->selectEntry();
}

QString TextField::selectedText() const
{
    return m_editor ? m_editor->selectedEntry() : QString();
}

QLineEdit *TextField::currentEditor() const
{
    if (!m_editor || !isFirstResponder())
        return nullptr;
    m_editor->flush();
    return m_editor;
}

bool TextField::becomeFirstResponder()
{
    // To select what is being typed would let the next character replace it.
    const bool isTyping = isFirstResponder() && hasBegunEntry();
    if (!takeFocus(focusTarget()))
        return false;
    if (m_editor && !isTyping)
        m_editor->selectEntry();
    return true;
}

bool TextField::isFirstResponder() const
{
    const QWidget *focused = window()->focusWidget();
    return focused && (focused == m_editor || focused == this);
}

QWidget *TextField::focusTarget()
{
    if (m_editor)
        return m_editor;
    return this;
}

bool TextField::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress && takesTab(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    if (isTabbedTo(*event))
        comeIntoSight();
    return Control::event(event);
}

void TextField::keyPressEvent(QKeyEvent *event)
{
    if (!m_editor && isEntryKey(*event)) {
        keys::handOn(*this, *event);
        return;
    }
    // The editor passes on what it does not use.
    event->ignore();
}

/// A scanner's Tab leaves the focus where the Return behind it is to end the entry; a person's one follows
/// the chain of fields, where there is one.
bool TextField::takesTab(const QKeyEvent &event)
{
    if (!keys::isTab(event))
        return false;
    if (keys::isScanners(*this, event))
        return true;
    QSet<const View *> asked{this};
    for (View *next = nextKeyView(); next && !asked.contains(next); next = next->nextKeyView()) {
        asked.insert(next);
        if (next->becomeFirstResponder())
            return true;
    }
    return false;
}

} // namespace platform
