#include "station/window/StationWindow.h"

#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/View.h"
#include "station/instruction/InstructionPane.h"
#include "station/window/ElidedLabel.h"
#include "station/window/LogPane.h"
#include "station/window/StatusTable.h"
#include "station/window/UpperRow.h"
#include "station/window/ViewArea.h"
#include "station/window/WindowLook.h"

#include <QAction>
#include <QCloseEvent>
#include <QLayout>
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

/// How much a pane beside the views gets of the room: what these leave, between its least and its wish.
int besideViews(int room, int wantedByViews, int least, int wish)
{
    return qBound(least, room - wantedByViews, wish);
}

} // namespace

StationWindow::StationWindow(const QString &stationName, const QList<SystemRow> &systems)
{
    setWindowTitle(stationName);
    setPalette(windowPalette());
    setContextMenuPolicy(Qt::NoContextMenu);
    makeToolBar(stationName);
    makePanes(systems);
    makeStatusBar();
    showActions();
    followPlugins();
    resize(OpeningSize.boundedTo(screen()->availableGeometry().size() - FrameAllowance));
}

StationWindow::~StationWindow()
{
    KVKExtensionStatusRelay::sharedStatusRelay()->setHandler({});
    KVKExtensionStatusRelay::sharedStatusRelay()->setMessageHandler({});
    KVKExtensionGuidanceRelay::sharedGuidanceRelay()->setOfferHandler({});
    KVKExtensionGuidanceRelay::sharedGuidanceRelay()->setCurrentHandler({});
}

void StationWindow::followPlugins()
{
    KVKExtensionStatusRelay *relay = KVKExtensionStatusRelay::sharedStatusRelay();
    relay->setHandler(
        [this](quint64 systemIndex, bool highlighted) { highlightSystem(systemIndex, highlighted); });
    relay->setMessageHandler([this](const QString &message) { showMessage(message); });
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
    m_run = bar->addAction(runIcon(), QStringLiteral("Run"));
    m_stop = bar->addAction(stopIcon(), QStringLiteral("Stop"));
    m_status = statusLabel();
    bar->addWidget(m_status);
    addToolBar(bar);
    for (QAction *action : {m_run, m_stop}) {
        auto *button = qobject_cast<QToolButton *>(bar->widgetForAction(action));
        button->setAutoRaise(false);
        // A click must not take the focus from the field that is being scanned into.
        button->setFocusPolicy(Qt::NoFocus);
        button->setMinimumSize(92, 38);
    }
    connect(m_run, &QAction::triggered, this, &StationWindow::runRequested);
    connect(m_stop, &QAction::triggered, this, &StationWindow::requestStop);
}

void StationWindow::makePanes(const QList<SystemRow> &systems)
{
    m_table = new StatusTable(systems);
    m_views = new QTabWidget;
    m_views->setTabBarAutoHide(true);
    m_views->setDocumentMode(true);
    m_views->tabBar()->setFocusPolicy(Qt::NoFocus);
    m_views->setFocusPolicy(Qt::NoFocus);
    m_log = new LogPane;
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
    connect(m_whole, &QSplitter::splitterMoved, this, [this] { m_sharedByHand = true; });
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
    if (m_sharedByHand)
        return;
    const int tabs = m_views->tabBar()->isVisibleTo(m_views) ? m_views->tabBar()->height() : 0;
    const int height = m_whole->height() - m_whole->handleWidth();
    const int log = besideViews(height, m_wanted.height() + tabs, m_log->minimumSizeHint().height(),
                                m_log->sizeHint().height());
    m_whole->setSizes({height - log, log});
}

void StationWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
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
}

void StationWindow::setImageFolders(const QStringList &folders)
{
    m_instructions->setImageFolders(folders);
}

void StationWindow::rememberIn(const QString &file)
{
    m_instructions->rememberIn(file);
}

void StationWindow::setStandsOnNoScreen()
{
    m_upper->setStandsOnNoScreen();
}

void StationWindow::setSystemState(int systemIndex, SystemState state, const QString &about)
{
    m_table->statusModel()->setState(systemIndex, state, about);
}

void StationWindow::highlightSystem(quint64 systemIndex, bool highlighted)
{
    m_table->statusModel()->setHighlighted(systemIndex, highlighted);
}

void StationWindow::setRunning(bool running)
{
    m_running = running;
    m_stopping = false;
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
    m_run->setEnabled(!m_running);
    m_stop->setEnabled(m_running && !m_stopping);
}

void StationWindow::closeEvent(QCloseEvent *event)
{
    // Sequences end on threads that need the main thread, so the window cannot wait for them in here.
    event->setAccepted(!m_running);
    m_closing = m_running;
    requestStop();
}

} // namespace station
