#include "station/window/StatusTable.h"

#include "station/window/StatusDelegate.h"

#include <QHeaderView>

namespace station {
namespace {

constexpr int RowHeight = 36;
constexpr int TextPixels = 16;
constexpr int NarrowestState = 106;
constexpr int ColumnPadding = 4;
constexpr int WidestColumn = 140;
constexpr int WidestMinimum = 250;
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
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (column == StatusModel::StateColumn)
            fitRows(0, m_model->rowCount() - 1);
    });
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
    horizontalHeader()->setStretchLastSection(true);
    resizeColumnsToContents();
    for (int column = 0; column < StatusModel::StateColumn; ++column)
        setColumnWidth(column, qMin(columnWidth(column) + ColumnPadding, WidestColumn));
    setColumnWidth(StatusModel::StateColumn, NarrowestState);
}

/// The state's column takes what the table has; a text that does not fit into it gets a higher row.
void StatusTable::fitRows(int first, int last)
{
    const int width = columnWidth(StatusModel::StateColumn);
    const int least = qMax(RowHeight, StatusDelegate::badgeSize(LongestState, font(), width).height());
    for (int row = first; row <= last; ++row) {
        const QString text = m_model->index(row, StatusModel::StateColumn).data().toString();
        setRowHeight(row, qMax(least, StatusDelegate::badgeSize(text, font(), width).height()));
    }
}

int StatusTable::columnsWidth(int stateWidth) const
{
    int width = stateWidth;
    for (int column = 0; column < StatusModel::StateColumn; ++column)
        width += columnWidth(column);
    return width;
}

QSize StatusTable::sizeHint() const
{
    return {columnsWidth(StatusDelegate::badgeSize(LongestState, font(), 0).width()),
            horizontalHeader()->height() + VisibleRows * RowHeight};
}

QSize StatusTable::minimumSizeHint() const
{
    return {qMin(columnsWidth(NarrowestState), WidestMinimum), horizontalHeader()->height() + RowHeight};
}

} // namespace station
