#pragma once

#include "station/window/SystemRow.h"

#include <QColor>
#include <QStyledItemDelegate>

namespace station {

/// Paints a cell of the status table: the system's colours, a badge with a sign for the state, a frame along
/// a highlighted row. A text whose colour could not be read on its row is black or white. Slot and state are
/// painted in the view's font, in bold; everything else in one that is a little smaller.
///
/// Thread: the main thread.
class StatusDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Whether the state's cell also says what the state is about, since no other column does.
    void setStateSaysAll(bool saysAll) { m_stateSaysAll = saysAll; }
    [[nodiscard]] bool stateSaysAll() const { return m_stateSaysAll; }
    /// The first and the last column that can be seen, where a frame begins and ends.
    void setEdges(int firstColumn, int lastColumn)
    {
        m_firstColumn = firstColumn;
        m_lastColumn = lastColumn;
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

    /// The colour of the frame around a highlighted row.
    [[nodiscard]] static QColor highlightColor();
    /// The colour of the badge of a state.
    [[nodiscard]] static QColor badgeColor(SystemState state);
    [[nodiscard]] static QColor badgeTextColor();
    /// The row's colour as it is seen, on a table whose base is this.
    [[nodiscard]] static QColor rowColor(const QModelIndex &index, const QColor &base);
    /// The colour of a cell's text; `text` where the system has none of its own.
    [[nodiscard]] static QColor textColor(const QModelIndex &index, const QColor &base = Qt::white,
                                          const QColor &text = Qt::black);

    /// The font of a cell, in a view with this font.
    [[nodiscard]] static QFont cellFont(const QFont &viewFont, int column, bool highlighted = false);
    /// The width of the state's cell whose badge has nothing but the longest word.
    [[nodiscard]] static int badgeWidth(const QFont &viewFont);
    /// The height of the state's cell when it is so wide and says all.
    [[nodiscard]] static int badgeHeight(const QString &about, const QFont &viewFont, int columnWidth);
    /// The width of a cell that has the text in one line, and its height where it is narrower.
    [[nodiscard]] static int textWidth(const QString &text, const QFont &viewFont, int column);
    [[nodiscard]] static int textHeight(const QString &text, const QFont &viewFont, int column,
                                        int columnWidth);

private:
    bool m_stateSaysAll = false;
    int m_firstColumn = 0;
    int m_lastColumn = 0;
};

} // namespace station
