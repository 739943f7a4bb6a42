#include "station/window/StatusDelegate.h"

#include "platform/RoundedFrame.h"
#include "platform/ShapedLine.h"
#include "platform/TextLines.h"
#include "station/look/Contrast.h"
#include "station/window/BadgeText.h"
#include "station/window/StateSign.h"
#include "station/window/StatusModel.h"

#include <QBrush>
#include <QFontInfo>
#include <QPainter>

namespace station {
namespace {

constexpr int FrameWidth = 3;
constexpr int TextMargin = 6;
constexpr QMargins AroundBadge{4, 3, 6, 4};
constexpr QMargins InBadge{8, 1, 8, 1};
constexpr int AfterSign = 7;
constexpr double SmallLetters = 0.8;
constexpr double SignPerLetter = 0.8;
constexpr int LeastTextWidth = 20;
/// More than a cell can show: a longer text is not measured to its end.
constexpr int MostCharacters = 500;

int signSize(const QFont &font)
{
    return static_cast<int>(QFontInfo(font).pixelSize() * SignPerLetter);
}

/// What stands beside the badge's texts.
int besideBadgeText()
{
    return AroundBadge.left() + AroundBadge.right() + InBadge.left() + InBadge.right();
}

/// Of what the state is about, below its word.
QFont aboutFont(const QFont &viewFont)
{
    return StatusDelegate::cellFont(viewFont, StatusModel::AboutColumn);
}

QString oneLine(QString text)
{
    if (text.size() > MostCharacters)
        text = text.left(MostCharacters) + QChar(0x2026);
    return text.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

void paintBackground(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QColor base = option.palette.color(QPalette::Base);
    painter->fillRect(option.rect, StatusDelegate::rowColor(index, base));
    QColor line = option.palette.color(QPalette::Text);
    line.setAlpha(40);
    painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1), line);
}

void paintText(QPainter *painter, const QRect &rect, const QModelIndex &index, const QColor &color)
{
    const bool isShort =
        index.column() < StatusModel::StateColumn || index.column() == StatusModel::TimeColumn;
    painter->setPen(color);
    const BadgeText wrapped(index.data().toString(), painter->font());
    // What a state is about makes its row as high as it needs; an answer takes the lines that there are.
    if (index.column() == StatusModel::AboutColumn ||
        (index.column() == StatusModel::AnswerColumn && wrapped.heightFor(rect.width()) <= rect.height())) {
        wrapped.draw(painter, rect);
        return;
    }
    const platform::TextLines line =
        platform::TextLines::broken(oneLine(index.data().toString()), painter->font(), rect.size(), 1);
    const Qt::Alignment place = (isShort ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter;
    platform::paintLine(*painter, rect, static_cast<int>(place), line.lines.value(0));
}

/// The frame runs along the whole row; each cell paints its piece of it.
void paintFrame(QPainter *painter, const QRect &rect, bool isFirst, bool isLast)
{
    const QColor color = StatusDelegate::highlightColor();
    painter->fillRect(QRect(rect.left(), rect.top(), rect.width(), FrameWidth), color);
    painter->fillRect(QRect(rect.left(), rect.bottom() - FrameWidth + 1, rect.width(), FrameWidth), color);
    if (isFirst)
        painter->fillRect(QRect(rect.left(), rect.top(), 2 * FrameWidth, rect.height()), color);
    if (isLast)
        painter->fillRect(QRect(rect.right() - FrameWidth + 1, rect.top(), FrameWidth, rect.height()), color);
}

/// Of the badge and the half of its line that lies outside of it.
platform::RoundedFrame frameOfBadge(const QColor &filling)
{
    constexpr double Corner = 5.0;
    const auto paint = [filling](QPainter &painter, const QRectF &area) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(255, 255, 255, 150), 1.0));
        painter.setBrush(filling);
        painter.drawRoundedRect(area.adjusted(1.0, 1.0, -1.0, -1.0), Corner, Corner);
    };
    return {{"badge", 0, filling.rgba()}, static_cast<int>(Corner) + 2, filling, paint};
}

/// Sign and word in one line, and below it what the state is about where the cell says all.
void paintBadge(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                const QString &about)
{
    const auto state = static_cast<SystemState>(index.data(StatusModel::StateRole).toInt());
    const QRect badge = option.rect.marginsRemoved(AroundBadge);
    platform::paintFrame(*painter, QRectF(badge).adjusted(-1.0, -1.0, 1.0, 1.0),
                         frameOfBadge(StatusDelegate::badgeColor(state)));
    painter->setRenderHint(QPainter::Antialiasing);
    QRect word = badge.marginsRemoved(InBadge);
    if (!about.isEmpty())
        word.setHeight(QFontMetrics(painter->font()).height());
    const int size = signSize(painter->font());
    const QRectF sign(word.left(), word.center().y() - size / 2.0 + 1.0, size, size);
    painter->fillPath(stateSign(state, sign), StatusDelegate::badgeTextColor());
    painter->setPen(StatusDelegate::badgeTextColor());
    platform::paintLine(*painter, word.adjusted(size + AfterSign, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                        index.data().toString());
    if (about.isEmpty())
        return;
    QRect below = badge.marginsRemoved(InBadge);
    below.setTop(word.bottom() + 1);
    BadgeText(about, aboutFont(option.font)).draw(painter, below);
}

} // namespace

QColor StatusDelegate::highlightColor()
{
    return {255, 149, 0};
}

QColor StatusDelegate::badgeColor(SystemState state)
{
    switch (state) {
    case SystemState::Running:
        return {0, 98, 204};
    case SystemState::Waiting:
        return {150, 84, 0};
    case SystemState::Passed:
        return {24, 128, 56};
    case SystemState::Failed:
    case SystemState::Erred:
        return {196, 28, 28};
    case SystemState::Stopped:
        return {74, 74, 80};
    case SystemState::Idle:
        break;
    }
    return {112, 112, 118};
}

QColor StatusDelegate::badgeTextColor()
{
    return Qt::white;
}

QColor StatusDelegate::rowColor(const QModelIndex &index, const QColor &base)
{
    const QVariant background = index.data(Qt::BackgroundRole);
    if (!background.isValid())
        return base;
    // A translucent colour lies on the table's own.
    const QColor color = background.value<QBrush>().color();
    const auto onBase = [alpha = color.alphaF()](float part, float below) {
        return part * alpha + below * (1.0F - alpha);
    };
    return QColor::fromRgbF(onBase(color.redF(), base.redF()), onBase(color.greenF(), base.greenF()),
                            onBase(color.blueF(), base.blueF()));
}

QColor StatusDelegate::textColor(const QModelIndex &index, const QColor &base, const QColor &text)
{
    const QVariant foreground = index.data(Qt::ForegroundRole);
    QColor wanted = foreground.isValid() ? foreground.value<QBrush>().color() : text;
    // Contrast is reckoned with the colour as it is seen; a translucent one would be seen as another.
    wanted.setAlpha(255);
    return readableOn(rowColor(index, base), wanted);
}

QFont StatusDelegate::cellFont(const QFont &viewFont, int column, bool highlighted)
{
    QFont font = viewFont;
    const bool isLarge = column == StatusModel::SlotColumn || column == StatusModel::StateColumn;
    font.setBold(highlighted || isLarge);
    if (!isLarge)
        font.setPixelSize(static_cast<int>(QFontInfo(viewFont).pixelSize() * SmallLetters));
    return font;
}

int StatusDelegate::badgeWidth(const QFont &viewFont)
{
    const QFont font = cellFont(viewFont, StatusModel::StateColumn);
    const QFontMetrics metrics(font);
    int widest = 0;
    for (const SystemState state :
         {SystemState::Idle, SystemState::Running, SystemState::Waiting, SystemState::Passed,
          SystemState::Failed, SystemState::Erred, SystemState::Stopped})
        widest = qMax(widest, metrics.horizontalAdvance(stateText(state)));
    return widest + signSize(font) + AfterSign + besideBadgeText();
}

int StatusDelegate::badgeHeight(const QString &about, const QFont &viewFont, int columnWidth)
{
    const int around = AroundBadge.top() + AroundBadge.bottom() + InBadge.top() + InBadge.bottom();
    const int word = QFontMetrics(cellFont(viewFont, StatusModel::StateColumn)).height();
    if (about.isEmpty())
        return word + around;
    const int width = qMax(columnWidth - besideBadgeText(), LeastTextWidth);
    return word + BadgeText(about, aboutFont(viewFont)).heightFor(width) + around + 1;
}

int StatusDelegate::textWidth(const QString &text, const QFont &viewFont, int column)
{
    // In bold, as in a row that is highlighted.
    return QFontMetrics(cellFont(viewFont, column, true)).horizontalAdvance(oneLine(text)) + 2 * TextMargin +
           1;
}

int StatusDelegate::textHeight(const QString &text, const QFont &viewFont, int column, int columnWidth)
{
    const int width = qMax(columnWidth - 2 * TextMargin, LeastTextWidth);
    return BadgeText(text, cellFont(viewFont, column)).heightFor(width) + 2 * FrameWidth + 2;
}

void StatusDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    painter->save();
    const bool highlighted = index.data(StatusModel::HighlightRole).toBool();
    painter->setFont(cellFont(option.font, index.column(), highlighted));
    paintBackground(painter, option, index);
    if (index.column() == StatusModel::StateColumn) {
        const QModelIndex about = index.siblingAtColumn(StatusModel::AboutColumn);
        paintBadge(painter, option, index, m_stateSaysAll ? about.data().toString() : QString());
    } else {
        paintText(
            painter, option.rect.adjusted(TextMargin, 0, -TextMargin, 0), index,
            textColor(index, option.palette.color(QPalette::Base), option.palette.color(QPalette::Text)));
    }
    if (highlighted)
        paintFrame(painter, option.rect, index.column() == m_firstColumn, index.column() == m_lastColumn);
    painter->restore();
}

} // namespace station
