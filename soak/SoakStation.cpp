#include "soak/SoakStation.h"

#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "platform/SplitView.h"
#include "plugin/Rooms.h"
#include "station/operator/Panels.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>

namespace soak {

using platform::Button;
using platform::TextField;
using platform::View;

namespace {

constexpr QSize WindowSize(1600, 1000);
constexpr std::chrono::minutes Patience(5);

Button *childButton(View *panel, const std::function<bool(Button *)> &isMeant)
{
    if (!panel)
        return nullptr;
    for (View *child : panel->subviews()) {
        auto *button = qobject_cast<Button *>(child);
        if (button && isMeant(button))
            return button;
    }
    return nullptr;
}

bool isAnswering(Button *button)
{
    return button->actionSelector() == "confirmBtnClicked:";
}

} // namespace

SoakStation::SoakStation(int groups, int slotsPerGroup)
{
    platform::Array groupOf;
    platform::Array slotOf;
    for (int group = 1; group <= groups; ++group) {
        for (int slot = 1; slot <= slotsPerGroup; ++slot) {
            groupOf.append(QStringLiteral("G%1").arg(group));
            slotOf.append(QStringLiteral("S%1").arg(slot));
        }
    }
    KVKConfigEngine *config = KVKConfigEngine::sharedConfigEngine();
    config->setSystemIndexToGroupMapping(groupOf);
    config->setSystemIndexToSlotMapping(slotOf);
    m_plugin = std::make_unique<interactive::InteractiveView>();
    m_window = std::make_unique<QWidget>();
    m_window->resize(WindowSize);
    auto *layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_plugin->view());
    m_window->show();
    m_window->activateWindow();
    serveUntil(QStringLiteral("the window"), [this] { return m_window->isActiveWindow(); });
    m_hands = std::make_unique<station::OperatorHands>(m_window.get());
}

SoakStation::~SoakStation()
{
    // Confirmations that are still on their way ask the main thread.
    QCoreApplication::processEvents();
}

void SoakStation::serveUntil(const QString &what, const std::function<bool()> &condition)
{
    const QDeadlineTimer limit(Patience);
    // Wakes the loop for conditions that change without an event.
    QTimer heartbeat;
    heartbeat.start(std::chrono::milliseconds(2));
    while (!condition()) {
        if (limit.hasExpired()) {
            std::cerr << "waited in vain for " << what.toStdString() << std::endl;
            std::_Exit(EXIT_FAILURE);
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

View *SoakStation::panel(const QString &panelKey)
{
    for (View *panel : station::panelsWithKey(m_plugin->rooms().views.splitView(), panelKey)) {
        if (panel->isVisible() && childButton(panel, isAnswering))
            return panel;
    }
    return nullptr;
}

Button *SoakStation::button(const QString &panelKey, const QString &title)
{
    return childButton(panel(panelKey),
                       [&](Button *button) { return isAnswering(button) && button->title() == title; });
}

TextField *SoakStation::field(const QString &identifier)
{
    for (View *view : station::treeOrder(m_plugin->rooms().views.splitView())) {
        auto *field = qobject_cast<TextField *>(view);
        if (field && field->isVisible() && field->identifier().text() == identifier)
            return field;
    }
    return nullptr;
}

QHash<QString, QPointer<TextField>> SoakStation::fields()
{
    QHash<QString, QPointer<TextField>> all;
    for (View *view : station::treeOrder(m_plugin->rooms().views.splitView())) {
        auto *field = qobject_cast<TextField *>(view);
        if (field && field->isVisible() && !field->identifier().isNull())
            all.insert(field->identifier().text(), field);
    }
    return all;
}

Button *SoakStation::buttonBeside(const TextField *field, const QString &title)
{
    return childButton(field->superview(),
                       [&](Button *button) { return isAnswering(button) && button->title() == title; });
}

Button *SoakStation::slotSwitch(const QString &panelKey, const QString &slot)
{
    View *holder = panel(panelKey);
    if (!holder)
        return nullptr;
    for (View *view : station::treeOrder(holder)) {
        auto *button = qobject_cast<Button *>(view);
        if (button && button->actionSelector() == "switchBtnClicked:" &&
            button->identifier().text().section(QLatin1Char('-'), 2) == slot)
            return button;
    }
    return nullptr;
}

int SoakStation::openPanels()
{
    const QList<View *> all = station::treeOrder(m_plugin->rooms().views.splitView());
    return static_cast<int>(std::ranges::count_if(all, [](View *view) {
        return station::isPanel(view) && view->isVisible() && childButton(view, isAnswering);
    }));
}

QMap<QString, qint64> SoakStation::kept()
{
    interactive::Rooms &rooms = m_plugin->rooms();
    const interactive::Waits::Kept waits = rooms.waits.kept();
    const interactive::PanelRecords::Kept records = rooms.records.kept();
    return {{"panel keys", waits.panelKeys},
            {"conditions", waits.conditions},
            {"waits", waits.waits},
            {"turns", waits.turns},
            {"records", records.records},
            {"askings", records.askings},
            {"answers", records.answers},
            {"slot states", rooms.slotStates.all().size()},
            {"rules", rooms.rules.panels().size()}};
}

} // namespace soak
