#include "platform/TextField.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

#include <algorithm>

namespace platform {

namespace {

constexpr double FocusBorderWidth = 2.0;
const QColor BorderColor(130, 130, 130);
const QColor FocusColor(0, 95, 204);

Qt::Alignment horizontal(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::Right:
        return Qt::AlignRight;
    case TextAlignment::Center:
        return Qt::AlignHCenter;
    case TextAlignment::Justified:
        return Qt::AlignJustify;
    case TextAlignment::Left:
    case TextAlignment::Natural:
        break;
    }
    return Qt::AlignLeft;
}

/// A key that writes or ends an entry; not one that moves the focus or only modifies others.
bool isEntryKey(const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
        return false;
    default:
        return !event->text().isEmpty() && event->text().front().isPrint();
    }
}

} // namespace

TextField::TextField(QWidget *parent)
    : Control(parent)
    , m_cell(std::make_unique<TextFieldCell>())
{
    m_cell->setFont(font());
}

TextField::TextField(const Rect &frame)
    : TextField(static_cast<QWidget *>(nullptr))
{
    setFrame(frame);
}

TextField::~TextField() = default;

QString TextField::stringValue() const
{
    return m_editor ? m_editor->text() : m_text;
}

void TextField::setStringValue(const QString &text)
{
    m_text = text;
    if (m_editor)
        m_editor->setText(text);
    update();
}

void TextField::setEditable(bool editable)
{
    if (editable == m_editable)
        return;
    m_editable = editable;
    if (editable) {
        makeEditor();
    } else {
        m_text = m_editor->text();
        delete m_editor;
        m_editor = nullptr;
    }
    update();
}

void TextField::makeEditor()
{
    m_editor = new QLineEdit(this);
    m_editor->setFrame(false);
    m_editor->setContextMenuPolicy(Qt::NoContextMenu);
    m_editor->setText(m_text);
    m_editor->setAttribute(Qt::WA_TransparentForMouseEvents, !editorTakesMouse());
    // A press of the mouse is the field's business; Tab reaches the editor.
    m_editor->setFocusPolicy(editorTakesMouse() ? Qt::StrongFocus : Qt::TabFocus);
    connect(m_editor, &QLineEdit::returnPressed, this, &TextField::endEntry);
    m_editor->installEventFilter(this);
    styleEditor();
    layout();
    m_editor->show();
}

/// Return ends the entry; what is still there afterwards is selected, so that the next entry replaces it.
void TextField::endEntry()
{
    const QPointer<TextField> self(this);
    sendAction();
    if (self && m_editor && m_editor->hasFocus() && !m_editor->text().isEmpty())
        m_editor->selectAll();
}

bool TextField::eventFilter(QObject *watched, QEvent *event)
{
    // The field shows by its border that it has the focus.
    if (watched == m_editor && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut))
        update();
    return Control::eventFilter(watched, event);
}

void TextField::styleEditor()
{
    if (!m_editor)
        return;
    m_editor->setFont(font().toQFont());
    QPalette palette = m_editor->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::Text, m_textColor.toQColor());
    m_editor->setPalette(palette);
    m_editor->setAlignment(horizontal(m_alignment) | Qt::AlignVCenter);
}

void TextField::setBordered(bool bordered)
{
    m_bordered = bordered;
    update();
}

void TextField::setDrawsBackground(bool draws)
{
    m_drawsBackground = draws;
    update();
}

void TextField::setBackgroundColor(const Color &color)
{
    m_backgroundColor = color;
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
    update();
}

void TextField::setCell(std::unique_ptr<TextFieldCell> cell)
{
    m_cell = std::move(cell);
    m_cell->setFont(font());
    layout();
    update();
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
    if (m_editor)
        m_editor->setGeometry(toWidget(m_cell->editingFrame(bounds())).toAlignedRect().adjusted(3, 0, -3, 0));
}

void TextField::selectText()
{
    if (!becomeFirstResponder() || !m_editor)
        return;
    m_editor->selectAll();
}

QString TextField::selectedText() const
{
    return m_editor ? m_editor->selectedText() : QString();
}

QLineEdit *TextField::currentEditor() const
{
    return m_editor && m_editor->hasFocus() ? m_editor : nullptr;
}

bool TextField::becomeFirstResponder()
{
    if (!isEnabled())
        return false;
    QWidget *target = focusTarget();
    target->setFocus(Qt::OtherFocusReason);
    if (m_editor)
        m_editor->selectAll();
    return target->hasFocus();
}

bool TextField::isFirstResponder() const
{
    return m_editor ? m_editor->hasFocus() : hasFocus();
}

QWidget *TextField::focusTarget()
{
    if (m_editor)
        return m_editor;
    return this;
}

void TextField::keyPressEvent(QKeyEvent *event)
{
    if (!isEntryKey(event)) {
        event->ignore();
        return;
    }
    for (View *view = nextResponder(); view; view = view->nextResponder()) {
        auto *field = qobject_cast<TextField *>(view);
        if (!field || !field->m_editor || !field->isEnabled())
            continue;
        field->becomeFirstResponder();
        QApplication::sendEvent(field->m_editor, event);
        return;
    }
    event->ignore();
}

void TextField::paintEvent(QPaintEvent *event)
{
    Control::paintEvent(event);
    QPainter painter(this);
    const QRectF whole(rect());
    if (m_drawsBackground)
        painter.fillRect(whole, m_backgroundColor.toQColor());
    if (isFirstResponder() && (m_bordered || m_cell->isBezeled())) {
        painter.setPen(QPen(FocusColor, FocusBorderWidth));
        painter.drawRect(whole.adjusted(1.0, 1.0, -1.0, -1.0));
    } else if (m_bordered || m_cell->isBezeled()) {
        painter.setPen(QPen(BorderColor, 1.0));
        painter.drawRect(whole.adjusted(0.5, 0.5, -0.5, -0.5));
    }
    if (!m_editor)
        paintText(painter);
}

void TextField::paintText(QPainter &painter)
{
    const QFont textFont = font().toQFont();
    const QFontMetricsF metrics(textFont);
    QRectF area = toWidget(m_cell->drawingFrame(bounds()));
    if (m_bordered || m_cell->isBezeled())
        area.adjust(4.0, 0.0, -4.0, 0.0);
    painter.setFont(textFont);
    QColor color = m_textColor.toQColor();
    if (!isEnabled())
        color.setAlphaF(color.alphaF() * 0.5F);
    painter.setPen(color);

    const bool oneLine = m_maximumNumberOfLines == 1 || area.height() < 2.0 * metrics.height();
    const bool centred = m_cell->centersVertically() || area.height() < metrics.height();
    const Qt::Alignment alignment = horizontal(m_alignment) | (centred || oneLine ? Qt::AlignVCenter : Qt::AlignTop);
    if (oneLine) {
        const QString shown = metrics.elidedText(m_text, Qt::ElideRight, area.width());
        painter.drawText(area, int(alignment | Qt::TextSingleLine | Qt::TextDontClip), shown);
        return;
    }
    painter.drawText(area, int(alignment | Qt::TextWordWrap), m_text);
}

} // namespace platform
