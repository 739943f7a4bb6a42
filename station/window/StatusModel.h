#pragma once

#include "station/window/SystemRow.h"

#include <QAbstractTableModel>
#include <QList>
#include <QTimer>

#include <chrono>
#include <functional>

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
    /// In the order in which they are read.
    enum Column {
        IndexColumn,
        GroupColumn,
        SlotColumn,
        StateColumn,
        AboutColumn, ///< What the system waits for, or why it is as it is.
        TimeColumn,  ///< How long it has been so.
        AnswerColumn,
        SequenceColumn,
        ColumnCount
    };
    enum Role {
        StateRole = Qt::UserRole, ///< The SystemState, as an int.
        HighlightRole,            ///< Whether the row is highlighted.
        WholeStateRole,           ///< The state with what it is about: "Waiting: its turn".
    };
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    explicit StatusModel(const QList<SystemRow> &systems, QObject *parent = nullptr);
    /// What tells the time; for tests.
    void setClock(Clock clock) { m_clock = std::move(clock); }

    // An unknown system index is ignored by all of these.

    /// `about` is what the state is about. The time begins anew when either changes.
    void setState(int systemIndex, SystemState state, const QString &about);
    /// The scripts that run for the system.
    void setSequence(int systemIndex, const QString &scripts);
    void setAnswer(int systemIndex, const QString &answer);
    /// A row is highlighted until as many have taken their highlight back as have asked for one.
    void setHighlighted(quint64 systemIndex, bool highlighted);

    /// Times go on while sequences run, once a second for all rows, and stand still otherwise. A run that
    /// begins takes the former one's times away.
    void setRunning(bool running);
    /// Runs while times do.
    [[nodiscard]] const QTimer &tick() const { return m_tick; }

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
        QString sequence;
        QString answer;
        std::chrono::steady_clock::time_point since;
        int highlights = 0;
    };

    [[nodiscard]] QString textOf(const Row &row, int column) const;
    [[nodiscard]] QString timeOf(const Row &row) const;
    void changed(int row, int firstColumn, int lastColumn);
    void showTimes();

    QList<Row> m_rows;
    Clock m_clock = &std::chrono::steady_clock::now;
    QTimer m_tick;
    std::chrono::steady_clock::time_point m_end; ///< When the last run ended.
    bool m_hasRun = false;
    bool m_running = false;
};

} // namespace station
