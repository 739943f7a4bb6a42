#pragma once

#include "station/window/SystemRow.h"

#include <QColor>
#include <QStyledItemDelegate>

namespace station {

/// Paints a cell of the status table: the system's colours, a badge for the state, a frame along a
/// highlighted row. A text whose colour could not be read on its row is black or white.
///
/// Thread: the main thread.
class StatusDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

    /// The colour of the frame around a highlighted row.
    [[nodiscard]] static QColor highlightColor();
    /// The colour of the badge of a state.
    [[nodiscard]] static QColor badgeColor(SystemState state);
    [[nodiscard]] static QColor badgeTextColor();
    /// The colour of a cell's text.
    [[nodiscard]] static QColor textColor(const QModelIndex &index);

    enum class BadgeLines { One, Two };
    /// The width of a cell whose badge has the text in one or two lines.
    [[nodiscard]] static int badgeWidth(const QString &text, const QFont &font, BadgeLines lines);
    /// The height of a cell as wide as the column.
    [[nodiscard]] static int badgeHeight(const QString &text, const QFont &font, int columnWidth);
};

} // namespace station
