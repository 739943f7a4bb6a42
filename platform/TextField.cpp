#include "platform/TextField.h"

#include "platform/EntryEditor.h"
#include "platform/KeyRouting.h"
#include "platform/TextLines.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QPainter>
#include <QSet>

#include <cmath>

namespace platform {

namespace {

constexpr double CornerRadius = 4.0;
constexpr double DisabledOpacity = 0.5;
/// Room between the border, or the edge of a label, and the text.
constexpr double PaddingInFrame = 4.0;
constexpr double PaddingOfLabel = 2.0;
/// A line editor without a frame keeps this to its own left and right.
constexpr double PaddingOfEditor = 2.0;
const QColor BorderColor(130, 130, 130);
const QColor FocusColor(0, 95, 204);

Qt::AlignmentFlag horizontal(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::Right:
        return Qt::AlignRight;
    case TextAlignment::Center:
        return Qt::AlignHCenter;
    case TextAlignment::Left:
    case TextAlignment::Justified:
    case TextAlignment::Natural:
        break;
    }
    return Qt::AlignLeft;
}

/// A key that writes or ends an entry; not one that moves the focus, is a shortcut or only modifies others.
bool isEntryKey(const QKeyEvent &event)
{
    return keys::isReturn(event) || event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete ||
           keys::isText(event);
}

QColor faded(QColor color)
{
    color.setAlphaF(static_cast<float>(color.alphaF() * DisabledOpacity));
    return color;
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

TextField::~TextField() = default;

QString TextField::stringValue() const
{
    return m_editor ? m_editor->entry() : m_text;
}

bool TextField::hasBegunEntry() const
{
    return m_editor && m_editor->hasBegun();
}

void TextField::setStringValue(const QString &text)
{
    // Asked before the text is set, which ends an entry that was begun.
    const bool endsEntry = hasBegunEntry();
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
    // The field shows by its border that it has the focus.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return Control::eventFilter(watched, event);
}

/// Return and Tab, before the editor sees them. Nothing may be touched after true: an action may have taken
/// the field away.
bool TextField::takesEditorKey(QKeyEvent &event)
{
    const bool endsEntry = keys::isReturn(event);
    if (!endsEntry && !takesTab(event))
        return false;
    event.accept();
    if (endsEntry)
        endEntry();
    return true;
}

void TextField::styleEditor()
{
    if (!m_editor)
        return;
    m_editor->setFont(font().toQFont());
    QPalette palette = m_editor->palette();
    // The field paints its background itself, also the colour of a refusal.
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::Text, m_textColor.toQColor());
    palette.setColor(QPalette::Disabled, QPalette::Text, faded(m_textColor.toQColor()));
    m_editor->setPalette(palette);
    m_editor->setAlignment(horizontal(m_alignment) | Qt::AlignVCenter);
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

QRectF TextField::toWidget(const Rect &rect) const
{
    return {rect.x(), frame().height() - rect.y() - rect.height(), rect.width(), rect.height()};
}

void TextField::layout()
{
    if (m_editor) {
        const double padding = PaddingInFrame - PaddingOfEditor;
        const QRectF area = toWidget(m_cell->editingFrame(bounds())).adjusted(padding, 0.0, -padding, 0.0);
        // Whole pixels outwards, so that no line of a letter is cut off.
        m_editor->setGeometry(area.toAlignedRect());
    }
    textChanged();
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

void TextField::paintEvent(QPaintEvent *event)
{
    Control::paintEvent(event);
    QPainter painter(this);
    paintFrame(painter);
    if (!m_editor)
        paintText(painter);
}

bool TextField::hasFrame() const
{
    return m_bordered || m_cell->isBezeled();
}

/// Background and border; the border of the field that takes the keys stands out.
void TextField::paintFrame(QPainter &painter) const
{
    const bool takesKeys = m_editor && m_editor->hasFocus();
    const double width = takesKeys ? 2.0 : 1.0;
    const double inset = hasFrame() ? width / 2.0 : 0.0;
    const bool rounded = m_cell->isBezeled() && m_cell->bezelStyle() == TextFieldCell::BezelStyle::Rounded;
    const double radius = rounded ? CornerRadius : 0.0;
    painter.setRenderHint(QPainter::Antialiasing, rounded);
    painter.setBrush(m_drawsBackground || m_colorBeforeRefusal ? QBrush(m_backgroundColor.toQColor())
                                                               : QBrush(Qt::NoBrush));
    painter.setPen(hasFrame() ? QPen(takesKeys || hasFocus() ? FocusColor : BorderColor, width)
                              : QPen(Qt::NoPen));
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

QRectF TextField::textArea() const
{
    const double padding = hasFrame() ? PaddingInFrame : PaddingOfLabel;
    return toWidget(m_cell->drawingFrame(bounds())).adjusted(padding, 0.0, -padding, 0.0);
}

TextLines TextField::textLines() const
{
    return TextLines::broken(m_text, font().toQFont(), textArea().size(), m_maximumNumberOfLines);
}

void TextField::textChanged()
{
    setToolTip(m_editor || textLines().isWhole ? QString() : TextLines::toolTip(m_text));
    update();
}

double TextField::spaceAbove(const TextLines &text, double height) const
{
    using enum TextFieldCell::VerticalPlacement;
    const double space = height - text.height;
    const TextFieldCell::VerticalPlacement placement = m_cell->verticalPlacement();
    if (placement == Centered || space < text.lineHeight)
        return space / 2.0;
    return placement == Lower ? space : 0.0;
}

void TextField::paintText(QPainter &painter) const
{
    const TextLines text = textLines();
    const QRectF area = textArea();
    const double top = area.top() + spaceAbove(text, area.height());
    painter.setFont(font().toQFont());
    painter.setPen(isEnabled() ? m_textColor.toQColor() : faded(m_textColor.toQColor()));
    const auto flags =
        static_cast<int>(horizontal(m_alignment) | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip);
    for (qsizetype i = 0; i < text.lines.size(); ++i) {
        const double upper = top + static_cast<double>(i) * text.lineSpacing;
        const QRectF line(area.left(), std::round(upper), area.width(), text.lineHeight);
        painter.drawText(line, flags, text.lines[i]);
    }
}

} // namespace platform
