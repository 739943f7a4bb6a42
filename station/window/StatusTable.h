#pragma once

#include "station/window/StatusDelegate.h"
#include "station/window/StatusModel.h"

#include <QTableView>

namespace station {

/// The status table: a row for each system, painted in the system's colours, its state as a coloured badge,
/// and a frame around the rows that are highlighted. A state that does not fit into its column makes its row
/// higher. It never takes the focus, so that a click on it loses no
/// scan.
///
/// Thread: the main thread.
class StatusTable : public QTableView
{
    Q_OBJECT
public:
    explicit StatusTable(const QList<SystemRow> &systems, QWidget *parent = nullptr);

    [[nodiscard]] StatusModel *statusModel() const { return m_model; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void setLook();
    void fitState();
    void fitRows(int first, int last);
    [[nodiscard]] int stateWidth(StatusDelegate::BadgeLines lines) const;
    [[nodiscard]] int columnsWidth(int stateWidth) const;
    [[nodiscard]] int barWidth() const;

    StatusModel *m_model;
};

} // namespace station
