#pragma once

#include "station/window/SystemRow.h"

#include <QAbstractTableModel>
#include <QList>

namespace station {

/// The systems, one row each, with how far they are. The colours are the station's own for the system where
/// it shows each system in colours of its own (KVKConfigEngine, KVKColorEngine); they are read when a row is
/// painted.
///
/// Thread: the main thread.
class StatusModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { IndexColumn, GroupColumn, SlotColumn, StateColumn, ColumnCount };
    enum Role {
        StateRole = Qt::UserRole, ///< The SystemState, as an int.
        HighlightRole,            ///< Whether the row is highlighted.
    };

    explicit StatusModel(const QList<SystemRow> &systems, QObject *parent = nullptr);

    /// An unknown system index is ignored by both. `about` stands behind the state's word.
    void setState(int systemIndex, SystemState state, const QString &about);
    /// A row is highlighted until as many have taken their highlight back as have asked for one.
    void setHighlighted(quint64 systemIndex, bool highlighted);
    /// The row of the system, or -1.
    [[nodiscard]] int rowOf(qint64 systemIndex) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        SystemRow system;
        SystemState state = SystemState::Idle;
        QString about;
        int highlights = 0;
    };

    [[nodiscard]] static QString textOf(const Row &row, int column);
    void rowChanged(int row);

    QList<Row> m_rows;
};

} // namespace station
