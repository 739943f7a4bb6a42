#pragma once

#include "input/Focus.h"
#include "platform/TextField.h"
#include "presentation/PanelViews.h"

#include <QObject>
#include <QPointer>

#include "common/PanelRecords.h"
#include "common/StationMap.h"

namespace interactive {

/// The small field "Loop:" in the corner of the view, through which an operator or a sequence sets the number
/// of passes.
///
/// The field takes keys only after a click or Tab into it, and gives the focus back with Return: a scan that
/// nobody waits for must not become a number of passes. Thread: the main thread.
class LoopControls : public QObject
{
    Q_OBJECT
public:
    LoopControls(const StationMap &station, PanelRecords &records, PanelViews &views, Focus &focus);

    /// Makes caption and field. The target is told as the field's target.
    void setupLoopButton(QObject *target);
    /// Takes the number that the field shows: every group's count begins anew.
    void configLoop(platform::View *sender);
    /// Shows a number and takes it; nothing without the field.
    void show(const QString &number);
    [[nodiscard]] platform::TextField *loopNumberField() const { return m_field; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void endEntry(platform::View *sender);

    const StationMap &m_station;
    PanelRecords &m_records;
    PanelViews &m_views;
    Focus &m_focus;
    QPointer<platform::TextField> m_field;
    bool m_entered = false; ///< A person has clicked or tabbed into the field and not left it since.
};

} // namespace interactive
