#include "station/window/StatusModel.h"

#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "station/window/PlainToolTip.h"

#include <QBrush>

#include <limits>

namespace station {
namespace {

QVariant brush(const std::optional<platform::Color> &color)
{
    return color ? QVariant(QBrush(color->toQColor())) : QVariant();
}

QVariant systemColor(int systemIndex, int role)
{
    if (!KVKConfigEngine::sharedConfigEngine()->statusTableCustomRowColorEnabled())
        return {};
    return role == Qt::BackgroundRole ? brush(KVKColorEngine::backgroundColorForIndex(systemIndex))
                                      : brush(KVKColorEngine::textColorForIndex(systemIndex));
}

} // namespace

StatusModel::StatusModel(const QList<SystemRow> &systems, QObject *parent)
    : QAbstractTableModel(parent)
{
    for (const SystemRow &system : systems)
        m_rows.append({system, SystemState::Idle, {}, 0});
}

int StatusModel::rowOf(qint64 systemIndex) const
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].system.index == systemIndex)
            return row;
    }
    return -1;
}

void StatusModel::setState(int systemIndex, SystemState state, const QString &about)
{
    const int row = rowOf(systemIndex);
    if (row < 0)
        return;
    m_rows[row].state = state;
    m_rows[row].about = about;
    rowChanged(row);
}

void StatusModel::setHighlighted(quint64 systemIndex, bool highlighted)
{
    if (systemIndex > static_cast<quint64>(std::numeric_limits<int>::max()))
        return;
    const int row = rowOf(static_cast<qint64>(systemIndex));
    if (row < 0)
        return;
    int &highlights = m_rows[row].highlights;
    highlights = highlighted ? highlights + 1 : qMax(0, highlights - 1);
    rowChanged(row);
}

void StatusModel::rowChanged(int row)
{
    Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

int StatusModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int StatusModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QString StatusModel::textOf(const Row &row, int column)
{
    switch (column) {
    case IndexColumn:
        return QString::number(row.system.index);
    case GroupColumn:
        return row.system.group;
    case SlotColumn:
        return row.system.slotName;
    default:
        return stateText(row.state, row.about);
    }
}

QVariant StatusModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return textOf(row, index.column());
    case Qt::ToolTipRole:
        return plainToolTip(textOf(row, index.column()));
    case Qt::BackgroundRole:
    case Qt::ForegroundRole:
        return systemColor(row.system.index, role);
    case StateRole:
        return static_cast<int>(row.state);
    case HighlightRole:
        return row.highlights > 0;
    default:
        return {};
    }
}

QVariant StatusModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case IndexColumn:
        return QStringLiteral("No.");
    case GroupColumn:
        return QStringLiteral("Group");
    case SlotColumn:
        return QStringLiteral("Slot");
    default:
        return QStringLiteral("State");
    }
}

} // namespace station
