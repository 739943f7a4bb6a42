#pragma once

#include "station/window/SystemRow.h"

#include <QMainWindow>
#include <QTimer>

class QAction;
class QSplitter;
class QTabWidget;

namespace platform {
class View;
} // namespace platform

namespace station {

class ElidedLabel;
class InstructionPane;
class LogPane;
class StatusTable;
class UpperRow;

/// The station's window: what runs (Run, Stop and a status text above), the status table on the left, the
/// plug-ins' views in the centre, at their right the instruction pane while a panel has something to show in
/// it, the log's last lines and a status bar for lines to the operator below.
///
/// It fits a screen of 1024 x 768 and opens no larger than its screen. The window follows the plug-ins'
/// highlight requests and lines for the operator (KVKExtensionStatusRelay), what their panels have to be
/// looked at (KVKExtensionGuidanceRelay), and the log proxy as long as it lives; there is one of it in a
/// process. Thread: the main thread. Requires: platform::MainQueue is attached.
class StationWindow : public QMainWindow
{
    Q_OBJECT
public:
    StationWindow(const QString &stationName, const QList<SystemRow> &systems);
    ~StationWindow() override;

    /// Puts a plug-in's view into the centre; a second and further one get a tab each, named by the name. The
    /// view has at least the given size where the window has that room, and at least PanelRoom or its own
    /// size otherwise: a larger view scrolls by itself. The window takes the view.
    void addPluginView(const QString &name, platform::View *view, const QSizeF &minimumSize);
    static constexpr QSize PanelRoom{640, 440};

    /// Puts a widget behind Run, Stop and the status text. The window takes it.
    void addTool(QWidget *tool);
    /// Folders, besides a sequence's own, that pictures for the instruction pane may lie in.
    void setImageFolders(const QStringList &folders);
    /// Takes what a person has chosen for the instruction pane from a file, and keeps it there.
    void rememberIn(const QString &file);
    /// The window may become wider than its screen, since nobody looks at it there.
    void setStandsOnNoScreen();

    /// Shows how far a system's sequences are; `about` stands behind the state's word. An unknown index is
    /// ignored.
    void setSystemState(int systemIndex, SystemState state, const QString &about = {});
    /// Frames a system's row, or takes one frame back; a row stays framed until all are taken back. An
    /// unknown index is ignored.
    void highlightSystem(quint64 systemIndex, bool highlighted);
    /// Tells the window that sequences run (Stop can be pressed) or that none does any more (Run can). A
    /// window that was asked to close meanwhile closes now.
    void setRunning(bool running);
    [[nodiscard]] bool isRunning() const { return m_running; }
    /// Whether the window was asked to close and waits for the sequences to end.
    [[nodiscard]] bool isClosing() const { return m_closing; }
    /// The text beside Run and Stop.
    void setStatus(const QString &text);
    [[nodiscard]] QString status() const;
    /// Shows a line to the operator in the status bar, for ten seconds or until the next one.
    void showMessage(const QString &message);
    [[nodiscard]] QString message() const;

    [[nodiscard]] StatusTable *statusTable() const { return m_table; }
    [[nodiscard]] LogPane *logPane() const { return m_log; }
    [[nodiscard]] InstructionPane *instructionPane() const { return m_instructions; }
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
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void makeToolBar(const QString &stationName);
    void makePanes(const QList<SystemRow> &systems);
    void makeStatusBar();
    void followPlugins();
    void shareRoom();
    void requestStop();
    void showActions();

    StatusTable *m_table = nullptr;
    QTabWidget *m_views = nullptr;
    LogPane *m_log = nullptr;
    InstructionPane *m_instructions = nullptr;
    UpperRow *m_upper = nullptr;  ///< Table, views and instructions.
    QSplitter *m_whole = nullptr; ///< These and the log.
    QSize m_wanted;               ///< What the largest plug-in's view asks for.
    bool m_sharedByHand = false;  ///< Whether a person has moved the bar above the log.
    QAction *m_run = nullptr;
    QAction *m_stop = nullptr;
    ElidedLabel *m_status = nullptr;
    ElidedLabel *m_message = nullptr;
    QTimer m_messageTime;
    bool m_running = false;
    bool m_stopping = false;
    bool m_closing = false;
};

} // namespace station
