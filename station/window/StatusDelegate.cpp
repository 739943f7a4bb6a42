#include "station/window/StatusDelegate.h"

#include "station/window/BadgeText.h"
#include "station/window/Contrast.h"
#include "station/window/StatusModel.h"

#include <QBrush>
#include <QPainter>

namespace station {
namespace {

constexpr int FrameWidth = 3;
constexpr int TextMargin = 4;
constexpr QMargins AroundBadge{4, 5, 6, 6};
constexpr QMargins InBadge{7, 0, 5, 0};
constexpr int AboveAndBelowBadgeText = 3;
constexpr int BesideBadgeText = AroundBadge.left() + AroundBadge.right() + InBadge.left() + InBadge.right();
constexpr int LeastTextWidth = 20;

QFont bold(QFont font)
{
    font.setBold(true);
    return font;
}

QFont cellFont(const QStyleOptionViewItem &option, bool bold)
{
    QFont font = option.font;
    font.setBold(bold);
    return font;
}

/// The row's colour as it is seen: a translucent one lies on white.
QColor rowColor(const QModelIndex &index)
{
    const QVariant background = index.data(Qt::BackgroundRole);
    if (!background.isValid())
        return Qt::white;
    const QColor color = background.value<QBrush>().color();
    const auto onWhite = [alpha = color.alphaF()](float part) { return part * alpha + 1.0F - alpha; };
    return QColor::fromRgbF(onWhite(color.redF()), onWhite(color.greenF()), onWhite(color.blueF()));
}

void paintBackground(QPainter *painter, const QRect &rect, const QModelIndex &index)
{
    painter->fillRect(rect, rowColor(index));
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), QColor(0, 0, 0, 40));
}

void paintText(QPainter *painter, const QRect &rect, const QColor &color, const QString &text, int alignment)
{
    painter->setPen(color);
    const QString shown = painter->fontMetrics().elidedText(text, Qt::ElideRight, rect.width());
    painter->drawText(rect, alignment | Qt::AlignVCenter, shown);
}

void paintBadge(QPainter *painter, const QRect &rect, const QModelIndex &index)
{
    const auto state = static_cast<SystemState>(index.data(StatusModel::StateRole).toInt());
    const QRect badge = rect.marginsRemoved(AroundBadge);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QColor(255, 255, 255, 150), 1.0));
    painter->setBrush(StatusDelegate::badgeColor(state));
    painter->drawRoundedRect(badge, 5.0, 5.0);
    painter->setPen(StatusDelegate::badgeTextColor());
    BadgeText(index.data().toString(), painter->font()).draw(painter, badge.marginsRemoved(InBadge));
}

/// The frame runs along the whole row; each cell paints its piece of it.
void paintFrame(QPainter *painter, const QRect &rect, const QModelIndex &index)
{
    const QColor color = StatusDelegate::highlightColor();
    painter->fillRect(QRect(rect.left(), rect.top(), rect.width(), FrameWidth), color);
    painter->fillRect(QRect(rect.left(), rect.bottom() - FrameWidth + 1, rect.width(), FrameWidth), color);
    if (index.column() == StatusModel::IndexColumn)
        painter->fillRect(QRect(rect.left(), rect.top(), 2 * FrameWidth, rect.height()), color);
    if (index.column() == StatusModel::StateColumn)
        painter->fillRect(QRect(rect.right() - FrameWidth + 1, rect.top(), FrameWidth, rect.height()), color);
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

QColor StatusDelegate::textColor(const QModelIndex &index)
{
    const QVariant foreground = index.data(Qt::ForegroundRole);
    QColor wanted = foreground.isValid() ? foreground.value<QBrush>().color() : QColor(Qt::black);
    // Contrast is reckoned with the colour as it is seen; a translucent one would be seen as another.
    wanted.setAlpha(255);
    return readableOn(rowColor(index), wanted);
}

int StatusDelegate::badgeHeight(const QString &text, const QFont &font, int columnWidth)
{
    const int above = AroundBadge.top() + AroundBadge.bottom() + AboveAndBelowBadgeText;
    return BadgeText(text, bold(font)).heightFor(qMax(columnWidth - BesideBadgeText, LeastTextWidth)) + above;
}

int StatusDelegate::badgeWidth(const QString &text, const QFont &font, BadgeLines lines)
{
    const BadgeText badge(text, bold(font));
    return (lines == BadgeLines::One ? badge.width() : badge.widthOfTwoLines()) + BesideBadgeText;
}

void StatusDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    painter->save();
    const bool highlighted = index.data(StatusModel::HighlightRole).toBool();
    painter->setFont(cellFont(option, highlighted || index.column() == StatusModel::StateColumn));
    paintBackground(painter, option.rect, index);
    if (index.column() == StatusModel::StateColumn) {
        paintBadge(painter, option.rect, index);
    } else {
        paintText(painter, option.rect.adjusted(TextMargin, 0, -TextMargin, 0), textColor(index),
                  index.data().toString(), Qt::AlignHCenter);
    }
    if (highlighted)
        paintFrame(painter, option.rect, index);
    painter->restore();
}

} // namespace station
