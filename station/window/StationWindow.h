#pragma once

#include "station/window/SystemRow.h"
#include "station/window/WindowMemory.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <functional>

class QAction;
class QDialog;
class QSplitter;
class QTabWidget;

namespace platform {
class View;
} // namespace platform

namespace station {

class ControlFocus;
class ElidedLabel;
class InstructionPane;
class LogPane;
class RunProgress;
class ShortcutGuard;
class StatusTable;
class UpperRow;
class WindowMenus;

/// The station's window: menus, what runs (Run, Stop, a status text and the progress above), the status table
/// on the left, the plug-ins' views in the centre, at their right the instruction pane while a panel has
/// something to show in it, the log and a status bar for lines to the operator below.
///
/// It fits a screen of 1024 x 768 and opens no larger than its screen, light or dark. The window follows the
/// plug-ins' highlight requests, passes and lines for the operator (KVKExtensionStatusRelay), what their
/// panels have to be looked at (KVKExtensionGuidanceRelay), and the log proxy as long as it lives; there is
/// one of it in a process. Thread: the main thread. Requires: platform::MainQueue is attached.
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
    /// What tells the systems that a thread which logs works for; called on that thread.
    void setLogOwners(std::function<QList<int>()> owners);
    /// Takes what a person has chosen for the window and its panes from a file, and keeps it there. Requires:
    /// the window has not been shown.
    void rememberIn(const QString &file);
    /// Light or dark from now on, and kept for the next time when a person has chosen it.
    enum class Keep { No, Yes };
    void setTheme(ThemeChoice choice, Keep keep);
    [[nodiscard]] ThemeChoice theme() const { return m_theme; }
    /// The window may become wider than its screen, since nobody looks at it there.
    void setStandsOnNoScreen();

    /// Shows how far a system's sequences are; `about` stands behind the state's word. An unknown index is
    /// ignored.
    void setSystemState(int systemIndex, SystemState state, const QString &about = {});
    /// The scripts that run for a system, and the last answer that its sequences were given.
    void setSystemSequence(int systemIndex, const QString &scripts);
    void setSystemAnswer(int systemIndex, const QString &answer);
    /// How many systems are done and how many were stopped, of how many that the run is for.
    void setProgress(int done, int stopped, int all);
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
    [[nodiscard]] RunProgress *progress() const { return m_progress; }
    [[nodiscard]] WindowMenus *menus() const { return m_menus; }
    [[nodiscard]] QAction *runAction() const;
    [[nodiscard]] QAction *stopAction() const;

signals:
    /// A person wants the sequences to run. Not sent while they do.
    void runRequested();
    /// A person wants the sequences to end: with Stop, or by closing the window while they run. Sent once for
    /// each run; the window stays open until setRunning(false).
    void stopRequested();

protected:
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void makeToolBar(const QString &stationName);
    void makePanes(const QList<SystemRow> &systems);
    void makeStatusBar();
    void connectMenus();
    void chooseFocusControls();
    void followPlugins();
    void shareRoom();
    void shareToolBar();
    void open();
    void remember() const;
    void showTheme();
    void showAbout();
    void requestStop();
    void showActions();

    WindowMemory m_memory;
    ThemeChoice m_theme = ThemeChoice::Auto;
    WindowMenus *m_menus = nullptr;
    ControlFocus *m_focus = nullptr;
    ShortcutGuard *m_guard = nullptr;
    StatusTable *m_table = nullptr;
    QTabWidget *m_views = nullptr;
    LogPane *m_log = nullptr;
    InstructionPane *m_instructions = nullptr;
    UpperRow *m_upper = nullptr;  ///< Table, views and instructions.
    QSplitter *m_whole = nullptr; ///< These and the log.
    QSize m_wanted;               ///< What the largest plug-in's view asks for.
    int m_logHeight = 0;          ///< What a person has chosen for the unfolded log; 0 for nothing.
    ElidedLabel *m_status = nullptr;
    RunProgress *m_progress = nullptr;
    ElidedLabel *m_message = nullptr;
    QPointer<QDialog> m_about;
    QTimer m_messageTime;
    bool m_hasRun = false;
    bool m_running = false;
    bool m_stopping = false;
    bool m_closing = false;
};

} // namespace station
