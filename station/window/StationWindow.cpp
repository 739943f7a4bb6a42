#include "station/window/StationWindow.h"

#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/View.h"
#include "station/base/Version.h"
#include "station/instruction/InstructionPane.h"
#include "station/look/ElidedLabel.h"
#include "station/look/WindowLook.h"
#include "station/window/ControlFocus.h"
#include "station/window/ErrorButton.h"
#include "station/window/LogPane.h"
#include "station/window/LogView.h"
#include "station/window/RunProgress.h"
#include "station/window/ShortcutGuard.h"
#include "station/window/StatusTable.h"
#include "station/window/UpperRow.h"
#include "station/window/ViewArea.h"
#include "station/window/WindowMenus.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

#include <chrono>
#include <cmath>

namespace station {
namespace {

constexpr QSize OpeningSize{1440, 900};
/// What a window manager puts around a window is not known before it is shown.
constexpr QSize FrameAllowance{8, 36};
constexpr std::chrono::seconds MessageTime{10};
const QString RunAgain = QStringLiteral("Run again");

/// How much a pane beside the views gets of the room: what these leave, between its least and its wish.
int besideViews(int room, int wantedByViews, int least, int wish)
{
    return qBound(least, room - wantedByViews, wish);
}

int widthOfRunAgain(const QToolButton &button)
{
    constexpr int Around = 24;
    return button.fontMetrics().horizontalAdvance(RunAgain) + button.iconSize().width() + Around;
}

QString aboutText(const QString &stationName)
{
    return QStringLiteral(
               "%1\n\nInteractive Station %2: tests many units at once and asks a person where one "
               "is needed.\n\nQt %3")
        .arg(stationName, QLatin1String(Version), QLatin1String(qVersion()));
}

} // namespace

StationWindow::StationWindow(const QString &stationName, const QList<SystemRow> &systems)
    : m_menus(new WindowMenus(this))
    , m_focus(new ControlFocus(this))
    , m_guard(new ShortcutGuard(this))
{
    setWindowTitle(stationName);
    setContextMenuPolicy(Qt::NoContextMenu);
    makeToolBar(stationName);
    makePanes(systems);
    makeStatusBar();
    connectMenus();
    chooseFocusControls();
    showActions();
    showTheme();
    followPlugins();
    resize(OpeningSize.boundedTo(screen()->availableGeometry().size() - FrameAllowance));
}

StationWindow::~StationWindow()
{
    KVKExtensionStatusRelay::sharedStatusRelay()->setHandler({});
    KVKExtensionStatusRelay::sharedStatusRelay()->setMessageHandler({});
    KVKExtensionStatusRelay::sharedStatusRelay()->setPassHandler({});
    KVKExtensionGuidanceRelay::sharedGuidanceRelay()->setOfferHandler({});
    KVKExtensionGuidanceRelay::sharedGuidanceRelay()->setCurrentHandler({});
}

void StationWindow::followPlugins()
{
    KVKExtensionStatusRelay *relay = KVKExtensionStatusRelay::sharedStatusRelay();
    relay->setHandler(
        [this](quint64 systemIndex, bool highlighted) { highlightSystem(systemIndex, highlighted); });
    relay->setMessageHandler([this](const QString &message) { showMessage(message); });
    relay->setPassHandler(
        [this](qint64 maximum, const QList<qint64> &finished) { m_progress->setPasses(maximum, finished); });
    KVKExtensionGuidanceRelay *guidance = KVKExtensionGuidanceRelay::sharedGuidanceRelay();
    guidance->setOfferHandler(
        [this](const KVKGuidancePointer &what, bool begins) { m_instructions->setOffered(what, begins); });
    guidance->setCurrentHandler(
        [this](const KVKGuidancePointer &what, bool begins) { m_instructions->setCurrent(what, begins); });
}

void StationWindow::makeToolBar(const QString &stationName)
{
    auto *bar = new QToolBar(this);
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize(QSize(22, 22));
    bar->setFont(windowFont(16));
    bar->addWidget(titleLabel(stationName));
    for (QAction *action : {runAction(), stopAction()}) {
        bar->addAction(action);
        auto *button = qobject_cast<QToolButton *>(bar->widgetForAction(action));
        button->setAutoRaise(false);
        // A click must not take the focus from the field that is being scanned into.
        button->setFocusPolicy(Qt::TabFocus);
        button->setMinimumSize(92, 38);
        m_focus->add(button, ControlFocus::Stands::ToolBar);
    }
    m_status = statusLabel();
    bar->addWidget(m_status);
    m_progress = new RunProgress;
    bar->addWidget(m_progress);
    addToolBar(bar);
}

/// The name of the station gives way first, as far as there is room for what tells of the run; in a narrower
/// window everything does, so that nothing goes out of sight.
void StationWindow::shareToolBar()
{
    constexpr int Roomy = 1000;
    constexpr int LeastButton = 92;
    constexpr int ProgressOfAStop = 200;
    const bool isRoomy = width() >= Roomy;
    auto *button = qobject_cast<QToolButton *>(findChild<QToolBar *>()->widgetForAction(runAction()));
    button->setMinimumWidth(isRoomy ? widthOfRunAgain(*button) : LeastButton);
    const int status = m_status->fontMetrics().horizontalAdvance(QStringLiteral("Not all passed")) + 32;
    m_status->setMinimumWidth(isRoomy ? status : 0);
    m_progress->setMinimumWidth(isRoomy ? ProgressOfAStop : 0);
}

void StationWindow::connectMenus()
{
    connect(runAction(), &QAction::triggered, this, &StationWindow::runRequested);
    connect(stopAction(), &QAction::triggered, this, &StationWindow::requestStop);
    // Queued: the menu is still being served when its entry is chosen.
    connect(m_menus->quit(), &QAction::triggered, this, &StationWindow::close, Qt::QueuedConnection);
    connect(m_menus->log(), &QAction::triggered, m_log, [this](bool shown) { m_log->setFolded(!shown); });
    connect(m_log, &LogPane::foldChanged, this, [this](bool folded) {
        m_menus->log()->setChecked(!folded);
        m_memory.setLogFolded(folded);
        shareRoom();
    });
    m_menus->instructions()->setChecked(!m_instructions->isFolded());
    connect(m_menus->instructions(), &QAction::triggered, m_instructions,
            [this](bool shown) { m_instructions->setFolded(!shown); });
    connect(m_instructions, &InstructionPane::roomChanged, this,
            [this] { m_menus->instructions()->setChecked(!m_instructions->isFolded()); });
    m_menus->setColumnsFilledBy([this](QMenu *menu) { m_table->fillColumnMenu(menu); });
    connect(m_menus, &WindowMenus::themeChosen, this,
            [this](ThemeChoice choice) { setTheme(choice, Keep::Yes); });
    connect(m_menus->about(), &QAction::triggered, this, &StationWindow::showAbout);
}

/// In the order of the eye: the tool bar's buttons are there already, the plug-ins' views lie between.
void StationWindow::chooseFocusControls()
{
    m_focus->add(m_table, ControlFocus::Stands::BeforeViews);
    m_focus->add(m_views->tabBar(), ControlFocus::Stands::BeforeViews);
    for (QWidget *control : m_instructions->controls())
        m_focus->add(control, ControlFocus::Stands::AfterViews);
    for (QWidget *control :
         {static_cast<QWidget *>(m_log->foldButton()), static_cast<QWidget *>(m_log->errorButton()),
          static_cast<QWidget *>(m_log->levelBox()), static_cast<QWidget *>(m_log->systemBox()),
          static_cast<QWidget *>(m_log->textField()), static_cast<QWidget *>(m_log->view())})
        m_focus->add(control, ControlFocus::Stands::AfterViews);
}

QAction *StationWindow::runAction() const
{
    return m_menus->run();
}

QAction *StationWindow::stopAction() const
{
    return m_menus->stop();
}

void StationWindow::makePanes(const QList<SystemRow> &systems)
{
    m_table = new StatusTable(systems);
    m_views = new QTabWidget;
    m_views->setTabBarAutoHide(true);
    m_views->setDocumentMode(true);
    // The tabs first hand their policy on to the bar.
    m_views->setFocusPolicy(Qt::NoFocus);
    m_views->tabBar()->setFocusPolicy(Qt::TabFocus);
    m_log = new LogPane(systems);
    m_instructions = new InstructionPane;

    m_upper = new UpperRow(m_table, new ViewArea(m_views), m_instructions);
    m_whole = new QSplitter(Qt::Vertical);
    m_whole->addWidget(m_upper);
    m_whole->addWidget(m_log);
    m_whole->setStretchFactor(0, 1);
    for (QSplitter *splitter : {static_cast<QSplitter *>(m_upper), m_whole}) {
        splitter->setChildrenCollapsible(false);
        splitter->setHandleWidth(5);
    }
    connect(m_whole, &QSplitter::splitterMoved, this, [this] { m_logHeight = m_log->height(); });
    setCentralWidget(m_whole);
}

void StationWindow::makeStatusBar()
{
    m_message = messageLabel();
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(m_message, 1);
    m_messageTime.setObjectName(QStringLiteral("messageTime"));
    m_messageTime.setParent(this);
    m_messageTime.setSingleShot(true);
    m_messageTime.setInterval(MessageTime);
    connect(&m_messageTime, &QTimer::timeout, this, [this] { showMessage({}); });
}

/// Where the window is small the table and the log give way first, since a panel is what is worked in.
void StationWindow::shareRoom()
{
    m_upper->share();
    const int tabs = m_views->tabBar()->isVisibleTo(m_views) ? m_views->tabBar()->height() : 0;
    const int height = m_whole->height() - m_whole->handleWidth();
    const int least = m_log->minimumHeight();
    const int free = besideViews(height, m_wanted.height() + tabs, least, m_log->sizeHint().height());
    const int log = m_log->isFolded() ? m_log->foldedHeight()
                    : m_logHeight > 0 ? qBound(least, m_logHeight,
                                               qMax(least, height - m_upper->minimumSizeHint().height()))
                                      : free;
    m_whole->handle(1)->setEnabled(!m_log->isFolded());
    m_whole->setSizes({height - log, log});
}

void StationWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    shareToolBar();
    // The panes have their new sizes once the window's layout has been done.
    layout()->activate();
    shareRoom();
}

void StationWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    shareRoom();
}

void StationWindow::addPluginView(const QString &name, platform::View *view, const QSizeF &minimumSize)
{
    const QSize wanted(static_cast<int>(std::ceil(minimumSize.width())),
                       static_cast<int>(std::ceil(minimumSize.height())));
    view->setMinimumSize(wanted.boundedTo(PanelRoom));
    m_wanted = m_wanted.expandedTo(wanted);
    m_upper->setWantedWidth(m_wanted.width());
    m_views->addTab(view, name);
}

void StationWindow::addTool(QWidget *tool)
{
    findChild<QToolBar *>()->addWidget(tool);
    m_focus->addTool(*tool);
}

void StationWindow::setImageFolders(const QStringList &folders)
{
    m_instructions->setImageFolders(folders);
}

void StationWindow::setLogOwners(std::function<QList<int>()> owners)
{
    m_log->setOwners(std::move(owners));
}

void StationWindow::rememberIn(const QString &file)
{
    m_memory = WindowMemory(file);
    m_instructions->rememberIn(file);
    m_table->rememberIn(file);
    m_upper->setChosenTableWidth(m_memory.tableWidth());
    m_logHeight = m_memory.logHeight();
    m_log->setFolded(m_memory.isLogFolded());
    setTheme(m_memory.theme(), Keep::No);
    open();
}

/// Where it was, as far as the screens that are there allow it.
void StationWindow::open()
{
    QList<QRect> screens;
    for (const QScreen *each : QGuiApplication::screens())
        screens.append(each->availableGeometry());
    if (const auto place = m_memory.place())
        setGeometry(placeOnScreens(*place, screens));
    if (m_memory.isMaximized())
        setWindowState(windowState() | Qt::WindowMaximized);
}

void StationWindow::remember() const
{
    m_memory.setMaximized(isMaximized());
    // A window that is maximised tells where it would be otherwise. What the instructions have taken is given
    // to them anew.
    QRect place = isMaximized() ? normalGeometry() : geometry();
    if (!isMaximized())
        place.setWidth(place.width() - m_upper->widened());
    m_memory.setPlace(place);
    m_memory.setTableWidth(m_upper->chosenTableWidth());
    m_memory.setLogHeight(m_logHeight);
}

void StationWindow::setTheme(ThemeChoice choice, Keep keep)
{
    if (keep == Keep::Yes)
        m_memory.setTheme(choice);
    // What the desktop has set is left alone until somebody wants it otherwise.
    if (std::exchange(m_theme, choice) != choice)
        applyTheme(choice);
    m_menus->setTheme(choice);
    showTheme();
}

void StationWindow::showTheme()
{
    const QPalette palette = windowPalette(isDark(QApplication::palette()));
    setPalette(palette);
    runAction()->setIcon(runIcon(palette));
    stopAction()->setIcon(stopIcon(palette));
}

bool StationWindow::event(QEvent *event)
{
    // The desktop has become light or dark, or somebody has chosen another theme.
    if (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ThemeChange)
        QMetaObject::invokeMethod(this, &StationWindow::showTheme, Qt::QueuedConnection);
    return QMainWindow::event(event);
}

bool StationWindow::focusNextPrevChild(bool next)
{
    m_focus->goOn(next);
    return true;
}

void StationWindow::showAbout()
{
    if (m_about) {
        m_about->raise();
        return;
    }
    // Not modal: the sequences go on, and so does whoever answers them.
    auto *about = new QMessageBox(QMessageBox::NoIcon, QStringLiteral("About"), aboutText(windowTitle()),
                                  QMessageBox::Close, this);
    // The station bears the name that its configuration gives it.
    about->setTextFormat(Qt::PlainText);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->setWindowModality(Qt::NonModal);
    m_about = about;
    about->show();
}

void StationWindow::setStandsOnNoScreen()
{
    m_upper->setStandsOnNoScreen();
}

void StationWindow::setSystemState(int systemIndex, SystemState state, const QString &about)
{
    m_table->statusModel()->setState(systemIndex, state, about);
}

void StationWindow::setSystemSequence(int systemIndex, const QString &scripts)
{
    m_table->statusModel()->setSequence(systemIndex, scripts);
}

void StationWindow::setSystemAnswer(int systemIndex, const QString &answer)
{
    m_table->statusModel()->setAnswer(systemIndex, answer);
}

void StationWindow::setProgress(int done, int stopped, int all)
{
    m_progress->setSystems(done, stopped, all);
}

void StationWindow::highlightSystem(quint64 systemIndex, bool highlighted)
{
    m_table->statusModel()->setHighlighted(systemIndex, highlighted);
}

void StationWindow::setRunning(bool running)
{
    const bool begins = running && !m_running;
    m_hasRun = m_hasRun || (m_running && !running);
    m_running = running;
    m_stopping = false;
    if (begins) {
        m_log->forgetErrors();
        // What was refused before would be taken for this run's.
        showMessage(QString());
        m_progress->begin();
    }
    m_table->statusModel()->setRunning(running);
    showActions();
    if (!running && std::exchange(m_closing, false))
        close();
}

void StationWindow::setStatus(const QString &text)
{
    m_status->setWholeText(text);
}

QString StationWindow::status() const
{
    return m_status->wholeText();
}

void StationWindow::showMessage(const QString &message)
{
    m_message->setWholeText(message);
    m_message->setAutoFillBackground(!message.isEmpty());
    m_message->update();
    if (message.isEmpty())
        m_messageTime.stop();
    else
        m_messageTime.start();
}

QString StationWindow::message() const
{
    return m_message->wholeText();
}

void StationWindow::requestStop()
{
    if (!m_running || std::exchange(m_stopping, true))
        return;
    showActions();
    setStatus(QStringLiteral("Stopping"));
    Q_EMIT stopRequested();
}

void StationWindow::showActions()
{
    runAction()->setEnabled(!m_running);
    stopAction()->setEnabled(m_running && !m_stopping);
    const QString run = m_hasRun ? RunAgain : QStringLiteral("Run");
    runAction()->setText(run);
    WindowMenus::describe(runAction(), run);
}

void StationWindow::closeEvent(QCloseEvent *event)
{
    remember();
    // Sequences end on threads that need the main thread, so the window cannot wait for them in here.
    event->setAccepted(!m_running);
    m_closing = m_running;
    requestStop();
}

} // namespace station
