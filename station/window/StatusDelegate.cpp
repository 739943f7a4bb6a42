#include "station/window/StatusDelegate.h"

#include "station/window/StatusModel.h"

#include <QBrush>
#include <QPainter>

namespace station {
namespace {

constexpr int FrameWidth = 3;
constexpr int TextMargin = 4;

QFont cellFont(const QStyleOptionViewItem &option, bool bold)
{
    QFont font = option.font;
    font.setBold(bold);
    return font;
}

void paintBackground(QPainter *painter, const QRect &rect, const QModelIndex &index)
{
    const QVariant background = index.data(Qt::BackgroundRole);
    painter->fillRect(rect, background.isValid() ? background.value<QBrush>() : QBrush(Qt::white));
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
    const QRect badge = rect.adjusted(4, 5, -6, -6);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QColor(255, 255, 255, 150), 1.0));
    painter->setBrush(StatusDelegate::badgeColor(state));
    painter->drawRoundedRect(badge, 5.0, 5.0);
    paintText(painter, badge.adjusted(7, 0, -5, 0), Qt::white, index.data().toString(), Qt::AlignLeft);
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
        const QVariant foreground = index.data(Qt::ForegroundRole);
        const QColor color = foreground.isValid() ? foreground.value<QBrush>().color() : QColor(Qt::black);
        paintText(painter, option.rect.adjusted(TextMargin, 0, -TextMargin, 0), color,
                  index.data().toString(), Qt::AlignHCenter);
    }
    if (highlighted)
        paintFrame(painter, option.rect, index);
    painter->restore();
}

} // namespace station
