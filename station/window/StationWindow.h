#pragma once

#include "station/window/SystemRow.h"

#include <QMainWindow>

class QAction;
class QLabel;
class QTabWidget;

namespace platform {
class View;
} // namespace platform

namespace station {

class LogPane;
class StatusTable;

/// The station's window: what runs (Run, Stop and a status text above), the status table on the left, the
/// plug-ins' views in the centre, the log's last lines below.
///
/// The window follows the plug-ins' highlight requests (KVKExtensionStatusRelay) and the log proxy as long as
/// it lives; there is one of it in a process. Thread: the main thread. Requires: platform::MainQueue is
/// attached.
class StationWindow : public QMainWindow
{
    Q_OBJECT
public:
    StationWindow(const QString &stationName, const QList<SystemRow> &systems);
    ~StationWindow() override;

    /// Puts a plug-in's view into the centre, with at least the given size; a second and further one get a
    /// tab each, named by the name. The window takes the view.
    void addPluginView(const QString &name, platform::View *view, const QSizeF &minimumSize);

    /// Shows how far a system's sequence is; `text` is what stands in its row, the state's own word when
    /// empty. An unknown index is ignored.
    void setSystemState(int systemIndex, SystemState state, const QString &text = {});
    /// Tells the window that sequences run (Stop can be pressed) or that none does any more (Run can). A
    /// window that was asked to close meanwhile closes now.
    void setRunning(bool running);
    [[nodiscard]] bool isRunning() const { return m_running; }
    /// Whether the window was asked to close and waits for the sequences to end.
    [[nodiscard]] bool isClosing() const { return m_closing; }
    /// The text beside Run and Stop.
    void setStatus(const QString &text);
    [[nodiscard]] QString status() const;

    [[nodiscard]] StatusTable *statusTable() const { return m_table; }
    [[nodiscard]] LogPane *logPane() const { return m_log; }
    [[nodiscard]] QAction *runAction() const { return m_run; }
    [[nodiscard]] QAction *stopAction() const { return m_stop; }

signals:
    /// A person wants the sequences to run. Not sent while they do.
    void runRequested();
    /// A person wants the sequences to end: with Stop, or by closing the window while they run. Sent once for
    /// each run; the window stays open until setRunning(false).
    void stopRequested();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void makeToolBar(const QString &stationName);
    void makePanes(const QList<SystemRow> &systems);
    void requestStop();
    void showActions();

    StatusTable *m_table = nullptr;
    QTabWidget *m_views = nullptr;
    LogPane *m_log = nullptr;
    QAction *m_run = nullptr;
    QAction *m_stop = nullptr;
    QLabel *m_status = nullptr;
    bool m_running = false;
    bool m_stopping = false;
    bool m_closing = false;
};

} // namespace station
