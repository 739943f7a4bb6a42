#include "platform/EntryEditor.h"
#include "platform/FocusRing.h"
#include "platform/Readable.h"
#include "platform/RoundedFrame.h"
#include "platform/ShapedLine.h"
#include "platform/TextField.h"
#include "platform/TextLines.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace platform {

namespace {

constexpr double CornerRadius = 4.0;
/// Room between the border, or the edge of a label, and the text.
constexpr double PaddingInFrame = 4.0;
constexpr double PaddingOfLabel = 2.0;
/// A line editor without a frame keeps this to its own left and right.
constexpr double PaddingOfEditor = 2.0;
const QColor BorderColor(130, 130, 130);
/// Behind white text that is selected, as what was refused is; themes have fainter ones.
const QColor SelectionColor(0, 84, 166);
/// Wide enough to be hit.
constexpr double ArrowWidth = 20.0;

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

RoundedFrame frameOfField(const QColor &filling, double radius)
{
    const auto paint = [filling, radius](QPainter &painter, const QRectF &area) {
        constexpr double width = 1.0;
        constexpr double inset = width / 2.0;
        painter.setRenderHint(QPainter::Antialiasing, radius > 0.0);
        painter.setBrush(filling);
        painter.setPen(QPen(BorderColor, width));
        painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius, radius);
    };
    return {{"field", 0, filling.rgba(), radius}, static_cast<int>(radius) + 1, filling, paint};
}

} // namespace

void TextField::styleEditor()
{
    if (!m_editor)
        return;
    m_editor->setFont(font().toQFont());
    const QPalette former = m_editor->palette();
    QPalette palette = former;
    // The field paints its background itself, also the colour of a refusal.
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::All, QPalette::Text, shownTextColor());
    palette.setColor(QPalette::All, QPalette::PlaceholderText, colorOfPlaceholder());
    palette.setColor(QPalette::All, QPalette::Highlight, SelectionColor);
    palette.setColor(QPalette::All, QPalette::HighlightedText, Qt::white);
    // Set anew it would be told to the editor, and painted, though nothing differs.
    if (palette != former)
        m_editor->setPalette(palette);
    m_editor->setAlignment(horizontal(m_alignment) | Qt::AlignVCenter);
}

QRectF TextField::toWidget(const Rect &rect) const
{
    return {rect.x(), frame().height() - rect.y() - rect.height(), rect.width(), rect.height()};
}

void TextField::layout()
{
    if (m_editor) {
        const double padding = PaddingInFrame - PaddingOfEditor;
        const double arrow = m_choices.isEmpty() ? 0.0 : ArrowWidth;
        const QRectF area =
            toWidget(m_cell->editingFrame(bounds())).adjusted(padding, 0.0, -padding - arrow, 0.0);
        // Whole pixels outwards, so that no line of a letter is cut off.
        m_editor->setGeometry(area.toAlignedRect());
    }
    textChanged();
}

void TextField::paintEvent(QPaintEvent *event)
{
    Control::paintEvent(event);
    QPainter painter(this);
    paintFrame(painter);
    if (!m_editor)
        paintText(painter);
    else if (!m_choices.isEmpty())
        paintArrow(painter);
}

bool TextField::hasFrame() const
{
    return m_bordered || m_cell->isBezeled();
}

bool TextField::showsFocus() const
{
    return hasFocus() || (m_editor && m_editor->hasFocus());
}

QColor TextField::filling() const
{
    return m_drawsBackground || m_colorBeforeRefusal ? m_backgroundColor.toQColor() : Control::filling();
}

void TextField::groundChanged()
{
    styleEditor();
    update();
}

QColor TextField::shownTextColor() const
{
    const QColor seen = readable::text(m_textColor.toQColor(), groundOfText());
    return isEnabled() ? seen : readable::faint(seen, groundOfText());
}

/// Background and border; the field that takes the keys has a ring around it.
void TextField::paintFrame(QPainter &painter) const
{
    const QColor filling =
        m_drawsBackground || m_colorBeforeRefusal ? m_backgroundColor.toQColor() : QColor(Qt::transparent);
    const bool rounded = m_cell->isBezeled() && m_cell->bezelStyle() == TextFieldCell::BezelStyle::Rounded;
    if (hasFrame())
        platform::paintFrame(painter, rect(), frameOfField(filling, rounded ? CornerRadius : 0.0));
    else
        painter.fillRect(rect(), filling);
    if (showsFocus())
        focusring::paint(painter, rect());
}

QRectF TextField::arrowArea() const
{
    const QRectF all(rect());
    return m_choices.isEmpty() ? QRectF() : all.adjusted(all.width() - ArrowWidth, 0.0, 0.0, 0.0);
}

/// What tells that there is a list, and where to press for it.
void TextField::paintArrow(QPainter &painter) const
{
    constexpr double HalfWidth = 4.0;
    constexpr double HalfHeight = 2.5;
    const QPointF middle = arrowArea().center();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shownTextColor());
    painter.drawPolygon(QPolygonF{middle + QPointF(-HalfWidth, -HalfHeight),
                                  middle + QPointF(HalfWidth, -HalfHeight),
                                  middle + QPointF(0.0, HalfHeight)});
}

QRectF TextField::textArea() const
{
    const double padding = hasFrame() ? PaddingInFrame : PaddingOfLabel;
    return toWidget(m_cell->drawingFrame(bounds())).adjusted(padding, 0.0, -padding, 0.0);
}

/// What a field that is read-only shows: its text, or what stands in for it.
QString TextField::shownText() const
{
    return m_text.isEmpty() && isEnabled() ? m_placeholder : m_text;
}

QColor TextField::colorOfPlaceholder() const
{
    return readable::faint(shownTextColor(), groundOfText());
}

TextLines TextField::textLines() const
{
    return TextLines::broken(shownText(), font().toQFont(), textArea().size(), m_maximumNumberOfLines);
}

void TextField::textChanged()
{
    setToolTip(showsWholeText() ? QString() : TextLines::toolTip(shownText()));
    update();
}

bool TextField::showsWholeText() const
{
    // Nothing is whole without being measured: a field is set up before it has its text.
    return m_editor || shownText().isEmpty() || textLines().isWhole;
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
    painter.setPen(m_text.isEmpty() ? colorOfPlaceholder() : shownTextColor());
    const auto flags = static_cast<int>(horizontal(m_alignment) | Qt::AlignVCenter | Qt::TextDontClip);
    for (qsizetype i = 0; i < text.lines.size(); ++i) {
        const double upper = top + static_cast<double>(i) * text.lineSpacing;
        const QRectF line(area.left(), std::round(upper), area.width(), text.lineHeight);
        paintLine(painter, line, flags, text.lines[i]);
    }
}

} // namespace platform
