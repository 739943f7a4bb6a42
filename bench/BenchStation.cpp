#include "bench/BenchStation.h"

#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "platform/MainQueue.h"
#include "platform/SplitView.h"
#include "plugin/Rooms.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace bench {

namespace {

platform::View *findBelow(platform::View *view, const QString &identifier)
{
    if (!view->identifier().isNull() && view->identifier().text() == identifier && view->isVisible())
        return view;
    for (platform::View *child : view->subviews()) {
        if (platform::View *found = findBelow(child, identifier))
            return found;
    }
    return nullptr;
}

void sendKey(int key, const QString &text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        if (QWidget *focus = QApplication::focusWidget())
            QCoreApplication::sendEvent(focus, &event);
    }
}

} // namespace

BenchStation::BenchStation(int slotsPerGroup)
{
    platform::Array groups;
    platform::Array slotNames;
    for (const char *group : {"G1", "G2"}) {
        for (int slot = 1; slot <= slotsPerGroup; ++slot) {
            groups.append(QString::fromLatin1(group));
            slotNames.append(slotName(slot));
        }
    }
    KVKConfigEngine *config = KVKConfigEngine::sharedConfigEngine();
    config->setSystemIndexToGroupMapping(groups);
    config->setSystemIndexToSlotMapping(slotNames);
    m_plugin = std::make_unique<interactive::InteractiveView>();
    m_window = std::make_unique<QWidget>();
    m_window->resize(1280, 800);
    auto *layout = new QVBoxLayout(m_window.get());
    layout->addWidget(m_plugin->view());
    m_window->show();
    m_window->activateWindow();
    serveUntil([this] { return m_window->isActiveWindow(); });
}

BenchStation::~BenchStation()
{
    m_plugin->interruptWaitingCalls();
    finishSequence();
    // Confirmations that are still on their way ask the main thread.
    QCoreApplication::processEvents();
}

void BenchStation::startSequence(const std::function<void()> &work)
{
    m_ended = false;
    m_sequence = std::jthread([this, work] {
        work();
        m_ended = true;
        platform::MainQueue::async([] {});
    });
}

void BenchStation::finishSequence()
{
    serveUntil([this] { return m_ended.load(); });
}

void BenchStation::runSequence(const std::function<void()> &work)
{
    startSequence(work);
    finishSequence();
}

void BenchStation::serveUntil(const std::function<bool()> &condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

platform::View *BenchStation::find(const QString &identifier)
{
    return findBelow(m_plugin->rooms().views.splitView(), identifier);
}

platform::Button *BenchStation::button(const QString &panelKey, const QString &title)
{
    platform::View *panel = find(panelKey);
    if (!panel)
        return nullptr;
    for (platform::View *child : panel->subviews()) {
        auto *found = qobject_cast<platform::Button *>(child);
        if (found && found->title() == title)
            return found;
    }
    return nullptr;
}

void BenchStation::type(const QString &text)
{
    for (const QChar character : text) {
        if (character == QLatin1Char('\n'))
            sendKey(Qt::Key_Return, QStringLiteral("\r"));
        else
            sendKey(character.toUpper().unicode(), QString(character));
    }
}

QString BenchStation::slotName(int slot)
{
    return QStringLiteral("S%1").arg(slot);
}

} // namespace bench
