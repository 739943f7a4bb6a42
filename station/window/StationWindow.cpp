#include "station/window/StationWindow.h"

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/View.h"
#include "station/window/LogPane.h"
#include "station/window/StatusTable.h"
#include "station/window/WindowLook.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

#include <cmath>

namespace station {

StationWindow::StationWindow(const QString &stationName, const QList<SystemRow> &systems)
{
    setWindowTitle(stationName);
    setPalette(windowPalette());
    setContextMenuPolicy(Qt::NoContextMenu);
    makeToolBar(stationName);
    makePanes(systems);
    showActions();
    KVKExtensionStatusRelay::sharedStatusRelay()->setHandler([this](quint64 systemIndex, bool highlighted) {
        m_table->statusModel()->setHighlighted(systemIndex, highlighted);
    });
    resize(1280, 800);
}

StationWindow::~StationWindow()
{
    KVKExtensionStatusRelay::sharedStatusRelay()->setHandler({});
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

    auto *upper = new QSplitter(Qt::Horizontal);
    upper->addWidget(m_table);
    upper->addWidget(m_views);
    upper->setStretchFactor(1, 1);
    auto *whole = new QSplitter(Qt::Vertical);
    whole->addWidget(upper);
    whole->addWidget(m_log);
    whole->setStretchFactor(0, 1);
    for (QSplitter *splitter : {upper, whole}) {
        splitter->setChildrenCollapsible(false);
        splitter->setHandleWidth(5);
    }
    setCentralWidget(whole);
}

void StationWindow::addPluginView(const QString &name, platform::View *view, const QSizeF &minimumSize)
{
    view->setMinimumSize(static_cast<int>(std::ceil(minimumSize.width())),
                         static_cast<int>(std::ceil(minimumSize.height())));
    m_views->addTab(view, name);
}

void StationWindow::setSystemState(int systemIndex, SystemState state, const QString &text)
{
    m_table->statusModel()->setState(systemIndex, state, text);
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
    m_status->setText(text);
}

QString StationWindow::status() const
{
    return m_status->text();
}

void StationWindow::requestStop()
{
    if (!m_running || std::exchange(m_stopping, true))
        return;
    showActions();
    setStatus(QStringLiteral("Stopping …"));
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
