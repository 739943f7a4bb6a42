#include "station/window/StatusTable.h"

#include "station/window/StatusDelegate.h"

#include <QHeaderView>

namespace station {
namespace {

constexpr int RowHeight = 36;
constexpr int TextPixels = 16;
constexpr int StateWidth = 106;
constexpr int ColumnPadding = 4;
constexpr int WidestColumn = 140;
constexpr int WidestMinimum = 250;
constexpr int VisibleRows = 8;

} // namespace

StatusTable::StatusTable(const QList<SystemRow> &systems, QWidget *parent)
    : QTableView(parent)
    , m_model(new StatusModel(systems, this))
{
    setModel(m_model);
    setItemDelegate(new StatusDelegate(this));
    setLook();
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
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(RowHeight);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    horizontalHeader()->setMinimumSectionSize(40);
    horizontalHeader()->setStretchLastSection(true);
    resizeColumnsToContents();
    for (int column = 0; column < StatusModel::StateColumn; ++column)
        setColumnWidth(column, qMin(columnWidth(column) + ColumnPadding, WidestColumn));
    setColumnWidth(StatusModel::StateColumn, StateWidth);
}

int StatusTable::columnsWidth() const
{
    int width = StateWidth;
    for (int column = 0; column < StatusModel::StateColumn; ++column)
        width += columnWidth(column);
    return width;
}

QSize StatusTable::sizeHint() const
{
    return {columnsWidth(), horizontalHeader()->height() + VisibleRows * RowHeight};
}

QSize StatusTable::minimumSizeHint() const
{
    return {qMin(columnsWidth(), WidestMinimum), horizontalHeader()->height() + RowHeight};
}

} // namespace station
