#include "station/window/StatusTable.h"

#include <QHeaderView>
#include <QScrollBar>

namespace station {
namespace {

constexpr int RowHeight = 36;
constexpr int TextPixels = 16;
constexpr int ColumnPadding = 4;
constexpr int WidestColumn = 140;
constexpr int WidestMinimum = 320;
constexpr int VisibleRows = 8;
/// The longest state of a run in which all goes well: rows keep their height while it comes and goes.
const QString LongestState = stateText(SystemState::Waiting, QStringLiteral("the operator"));

} // namespace

StatusTable::StatusTable(const QList<SystemRow> &systems, QWidget *parent)
    : QTableView(parent)
    , m_model(new StatusModel(systems, this))
{
    setModel(m_model);
    setItemDelegate(new StatusDelegate(this));
    setAccessibleName(QStringLiteral("Systems"));
    setLook();
    connect(m_model, &StatusModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) { fitRows(first.row(), last.row()); });
}

void StatusTable::setLook()
{
    QFont text = font();
    text.setPixelSize(TextPixels);
    setFont(text);
    setFocusPolicy(Qt::NoFocus);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(RowHeight);
    verticalHeader()->setMinimumSectionSize(RowHeight);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    horizontalHeader()->setMinimumSectionSize(40);
    resizeColumnsToContents();
    for (int column = 0; column < StatusModel::StateColumn; ++column)
        setColumnWidth(column, qMin(columnWidth(column) + ColumnPadding, WidestColumn));
    fitState();
}

void StatusTable::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitState();
}

/// The state's column takes what the others leave, and where that is too little the table is scrolled.
void StatusTable::fitState()
{
    const int left = viewport()->width() - columnsWidth(0);
    setColumnWidth(StatusModel::StateColumn, qMax(left, stateWidth(StatusDelegate::BadgeLines::Two)));
    fitRows(0, m_model->rowCount() - 1);
}

/// A text that does not fit into its column gets a higher row.
void StatusTable::fitRows(int first, int last)
{
    const int width = columnWidth(StatusModel::StateColumn);
    const int least = qMax(RowHeight, StatusDelegate::badgeHeight(LongestState, font(), width));
    for (int row = first; row <= last; ++row) {
        const QString text = m_model->index(row, StatusModel::StateColumn).data().toString();
        setRowHeight(row, qMax(least, StatusDelegate::badgeHeight(text, font(), width)));
    }
}

int StatusTable::stateWidth(StatusDelegate::BadgeLines lines) const
{
    return StatusDelegate::badgeWidth(LongestState, font(), lines);
}

int StatusTable::columnsWidth(int stateWidth) const
{
    int width = stateWidth;
    for (int column = 0; column < StatusModel::StateColumn; ++column)
        width += columnWidth(column);
    return width;
}

/// What the scroll bar takes where not all rows can be expected to be seen.
int StatusTable::barWidth() const
{
    return m_model->rowCount() > VisibleRows ? verticalScrollBar()->sizeHint().width() : 0;
}

QSize StatusTable::sizeHint() const
{
    return {columnsWidth(stateWidth(StatusDelegate::BadgeLines::One)) + barWidth(),
            horizontalHeader()->height() + VisibleRows * RowHeight};
}

QSize StatusTable::minimumSizeHint() const
{
    return {qMin(columnsWidth(stateWidth(StatusDelegate::BadgeLines::Two)) + barWidth(), WidestMinimum),
            horizontalHeader()->height() + RowHeight};
}

} // namespace station
