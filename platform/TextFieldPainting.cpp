#include "platform/EntryEditor.h"
#include "platform/TextField.h"
#include "platform/TextLines.h"

#include <QFontMetricsF>
#include <QPainter>

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

QColor faded(QColor color)
{
    color.setAlphaF(static_cast<float>(color.alphaF() * DisabledOpacity));
    return color;
}

/// Grey where it can be read, otherwise the colour of the text itself.
QColor placeholderColor(const QColor &ground, const QColor &text)
{
    constexpr int LeastLightness = 190;
    const QColor grey(90, 90, 90);
    return qGray(ground.rgb()) >= LeastLightness ? grey : text;
}

/// A colour as it is seen on the light ground of a panel.
QColor onWhite(const QColor &color)
{
    const auto mixed = [&color](int part) {
        return static_cast<int>(part * double{color.alphaF()} + 255.0 * (1.0 - double{color.alphaF()}));
    };
    return {mixed(color.red()), mixed(color.green()), mixed(color.blue())};
}

} // namespace

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
    palette.setColor(QPalette::PlaceholderText, colorOfPlaceholder());
    palette.setColor(QPalette::Disabled, QPalette::PlaceholderText, faded(colorOfPlaceholder()));
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
    const QColor color = m_textColor.toQColor();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isEnabled() ? color : faded(color));
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
    return placeholderColor(onWhite(m_backgroundColor.toQColor()), m_textColor.toQColor());
}

TextLines TextField::textLines() const
{
    return TextLines::broken(shownText(), font().toQFont(), textArea().size(), m_maximumNumberOfLines);
}

void TextField::textChanged()
{
    setToolTip(m_editor || textLines().isWhole ? QString() : TextLines::toolTip(shownText()));
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
    const QColor color = m_text.isEmpty() ? colorOfPlaceholder() : m_textColor.toQColor();
    painter.setPen(isEnabled() ? color : faded(color));
    const auto flags =
        static_cast<int>(horizontal(m_alignment) | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip);
    for (qsizetype i = 0; i < text.lines.size(); ++i) {
        const double upper = top + static_cast<double>(i) * text.lineSpacing;
        const QRectF line(area.left(), std::round(upper), area.width(), text.lineHeight);
        painter.drawText(line, flags, text.lines[i]);
    }
}

} // namespace platform
