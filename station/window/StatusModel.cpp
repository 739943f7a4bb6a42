#include "station/window/StatusModel.h"

#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "station/look/PlainToolTip.h"
#include "station/window/TimeText.h"

#include <QBrush>

#include <algorithm>
#include <limits>
#include <utility>

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
        m_rows.append({system, SystemState::Idle, {}, {}, {}, {}, 0});
    m_tick.setInterval(std::chrono::seconds(1));
    connect(&m_tick, &QTimer::timeout, this, &StatusModel::showTimes);
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
    if (row < 0 || (m_rows[row].state == state && m_rows[row].about == about))
        return;
    m_rows[row].state = state;
    m_rows[row].about = about;
    m_rows[row].since = m_clock();
    changed(row, 0, ColumnCount - 1);
}

void StatusModel::setSequence(int systemIndex, const QString &scripts)
{
    const int row = rowOf(systemIndex);
    if (row < 0 || m_rows[row].sequence == scripts)
        return;
    m_rows[row].sequence = scripts;
    changed(row, SequenceColumn, SequenceColumn);
}

void StatusModel::setAnswer(int systemIndex, const QString &answer)
{
    const int row = rowOf(systemIndex);
    if (row < 0 || m_rows[row].answer == answer)
        return;
    m_rows[row].answer = answer;
    changed(row, AnswerColumn, AnswerColumn);
}

void StatusModel::setRunning(bool running)
{
    if (std::exchange(m_running, running) == running)
        return;
    if (running) {
        m_hasRun = true;
        for (Row &row : m_rows)
            row.since = m_clock();
        m_tick.start();
    } else {
        m_end = m_clock();
        m_tick.stop();
    }
    showTimes();
}

void StatusModel::showTimes()
{
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, TimeColumn), index(rowCount() - 1, TimeColumn));
}

void StatusModel::setHighlighted(quint64 systemIndex, bool highlighted)
{
    if (systemIndex > static_cast<quint64>(std::numeric_limits<int>::max()))
        return;
    const int row = rowOf(static_cast<qint64>(systemIndex));
    if (row < 0)
        return;
    int &highlights = m_rows[row].highlights;
    const bool wasHighlighted = highlights > 0;
    highlights = highlighted ? highlights + 1 : qMax(0, highlights - 1);
    if (wasHighlighted != (highlights > 0))
        changed(row, 0, ColumnCount - 1);
}

void StatusModel::changed(int row, int firstColumn, int lastColumn)
{
    Q_EMIT dataChanged(index(row, firstColumn), index(row, lastColumn));
}

int StatusModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int StatusModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

/// A system that nothing runs for has no time.
QString StatusModel::timeOf(const Row &row) const
{
    if (!m_hasRun || row.state == SystemState::Idle)
        return {};
    const auto until = m_running ? m_clock() : std::max(m_end, row.since);
    return timeText(std::chrono::duration_cast<std::chrono::seconds>(until - row.since));
}

QString StatusModel::textOf(const Row &row, int column) const
{
    switch (column) {
    case IndexColumn:
        return QString::number(row.system.index);
    case GroupColumn:
        return row.system.group;
    case SlotColumn:
        return row.system.slotName;
    case AboutColumn:
        return row.about;
    case TimeColumn:
        return timeOf(row);
    case AnswerColumn:
        return row.answer;
    case SequenceColumn:
        return row.sequence;
    default:
        return stateText(row.state);
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
    case Qt::AccessibleTextRole:
        // An empty cell has nothing to be called by.
        return textOf(row, index.column()).isEmpty() ? QStringLiteral("none") : textOf(row, index.column());
    case Qt::ToolTipRole:
        // The state's column says all of it where there is no room for another.
        return plainToolTip(index.column() == StateColumn ? stateText(row.state, row.about)
                                                          : textOf(row, index.column()));
    case WholeStateRole:
        return stateText(row.state, row.about);
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
    case AboutColumn:
        return QStringLiteral("Waits for / why");
    case TimeColumn:
        return QStringLiteral("Time");
    case AnswerColumn:
        return QStringLiteral("Last answer");
    case SequenceColumn:
        return QStringLiteral("Sequence");
    default:
        return QStringLiteral("State");
    }
}

} // namespace station
