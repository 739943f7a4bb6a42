#include "tests/support/PluginFixture.h"

#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/Button.h"
#include "platform/CollectionView.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "tests/support/Wait.h"

#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <iostream>

using interactive::InteractiveView;
using platform::Array;
using platform::Button;
using platform::Dictionary;
using platform::Error;
using platform::Identifier;
using platform::TextField;
using platform::Value;
using platform::View;

namespace testsupport {
namespace {

/// What the confirmation logs first about a button that is gone.
const QString goneButtonLine =
    QStringLiteral("__37-[InteractiveView confirmBtnClicked:]_block_invoke: (null). responders: ");

View *firstWithIdentifier(View *root, const QString &text, const std::function<bool(View *)> &accepts)
{
    for (View *view : descendants(root)) {
        if (!view->identifier().isNull() && view->identifier().text() == text && accepts(view))
            return view;
    }
    return nullptr;
}

Button *confirmButton(View *panel, const std::function<bool(Button *)> &accepts)
{
    for (View *child : panel->subviews()) {
        auto *button = qobject_cast<Button *>(child);
        if (button && button->actionSelector() == "confirmBtnClicked:" && accepts(button))
            return button;
    }
    return nullptr;
}

template <class Kind>
Kind *firstOfKind(View *root)
{
    for (View *view : descendants(root)) {
        if (auto *match = qobject_cast<Kind *>(view))
            return match;
    }
    return nullptr;
}

bool hasButtons(View *panel)
{
    return confirmButton(panel, [](Button *) { return true; }) != nullptr;
}

} // namespace

QList<View *> descendants(View *view)
{
    QList<View *> found;
    if (!view)
        return found;
    for (View *child : view->subviews()) {
        found.append(child);
        found.append(descendants(child));
    }
    return found;
}

PluginFixture::PluginFixture() = default;
PluginFixture::~PluginFixture() = default;

void PluginFixture::TearDown()
{
    endCalls();
    m_plugin.reset();
    m_window.reset();
    KVKExtensionStatusRelay *relay = KVKExtensionStatusRelay::sharedStatusRelay();
    relay->setHandler({});
    relay->setWaitHandler({});
    relay->setMessageHandler({});
    KVKColorEngine::setProviders({}, {});
}

void PluginFixture::endCalls()
{
    if (m_plugin)
        m_plugin->interruptWaitingCalls();
    const auto ended = [this] {
        return std::ranges::all_of(m_calls, [](const auto &call) { return call->finished(); });
    };
    if (!waitUntil(ended)) {
        // Neither joining nor destroying what the thread still uses would end.
        std::cerr << "a call could not be interrupted" << std::endl;
        std::_Exit(EXIT_FAILURE);
    }
    m_calls.clear();
    if (m_plugin)
        settle();
}

void PluginFixture::configureHost()
{
    Array groups;
    Array slotNames;
    for (const QString &group : station.groups) {
        for (const QString &slot : station.slotNames) {
            groups.append(group);
            slotNames.append(slot);
        }
    }
    KVKConfigEngine *config = KVKConfigEngine::sharedConfigEngine();
    config->setSystemIndexToGroupMapping(station.systemGroups.value_or(groups));
    config->setSystemIndexToSlotMapping(station.systemSlots.value_or(slotNames));
    config->setStatusTableCustomRowColorEnabled(station.customColors);

    const auto provider = [](const QHash<qint64, platform::Color> &colors) {
        return [colors](const Value &index) -> std::optional<platform::Color> {
            const auto found = colors.constFind(index.toLongLong());
            return found == colors.constEnd() ? std::nullopt : std::optional(*found);
        };
    };
    KVKColorEngine::setProviders(provider(station.backgrounds), provider(station.texts));
    KVKExtensionStatusRelay *relay = KVKExtensionStatusRelay::sharedStatusRelay();
    relay->setMessageHandler([this](const QString &line) { operatorLines.append(line); });
    relay->setWaitHandler([this](const KVKCallWait &wait) {
        thread_local bool waitsForTurn = false;
        const bool waits = wait.what == QLatin1String("its turn");
        m_waitingForTurn += static_cast<int>(waits) - static_cast<int>(waitsForTurn);
        waitsForTurn = waits;
    });
    relay->setHandler(
        [this](quint64 systemIndex, bool highlighted) { highlights.emplace_back(systemIndex, highlighted); });
}

void PluginFixture::start()
{
    if (m_plugin)
        return;
    configureHost();
    m_plugin = std::make_unique<InteractiveView>();
    m_window = makeWindow();
    m_window->show();
    m_window->activateWindow();
    ASSERT_TRUE(waitUntil([this] { return m_window->isActiveWindow() && m_window->isVisible(); }))
        << "the window was not shown";
}

std::unique_ptr<QWidget> PluginFixture::makeWindow()
{
    auto window = std::make_unique<QWidget>();
    window->resize(station.windowSize);
    auto *layout = new QVBoxLayout(window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_plugin->view());
    return window;
}

InteractiveView &PluginFixture::plugin()
{
    start();
    return *m_plugin;
}

interactive::Rooms &PluginFixture::rooms()
{
    return plugin().rooms();
}

interactive::PanelSubject PluginFixture::subject(const Value &groupNumber, const Value &systemIndex)
{
    return interactive::PanelSubject::of(groupNumber, systemIndex, rooms().station, rooms().waits);
}

QWidget &PluginFixture::window()
{
    start();
    return *m_window;
}

SequencerCall &PluginFixture::onSequencer(SequencerCall::Function function)
{
    start();
    return *m_calls.emplace_back(std::make_unique<SequencerCall>(std::move(function)));
}

SequencerCall &PluginFixture::showView(const Value &systemIndex, const Dictionary &config)
{
    InteractiveView &target = plugin();
    return onSequencer(
        [&target, systemIndex, config](Error *error) { return target.showView(systemIndex, config, error); });
}

SequencerCall &PluginFixture::showGroup(const Value &groupNumber, const Dictionary &config)
{
    InteractiveView &target = plugin();
    return onSequencer([&target, groupNumber, config](Error *error) {
        return target.showGroupView(groupNumber, config, error);
    });
}

SequencerCall &PluginFixture::showViewWithoutError(const Value &systemIndex, const Dictionary &config)
{
    InteractiveView &target = plugin();
    return onSequencer(
        [&target, systemIndex, config](Error *) { return target.showView(systemIndex, config, nullptr); });
}

SequencerCall &PluginFixture::showGroupWithoutError(const Value &groupNumber, const Dictionary &config)
{
    InteractiveView &target = plugin();
    return onSequencer([&target, groupNumber, config](Error *) {
        return target.showGroupView(groupNumber, config, nullptr);
    });
}

Value PluginFixture::setLoop(const Value &maximum)
{
    InteractiveView &target = plugin();
    return onSequencer([&target, maximum](Error *error) { return target.setLoop(maximum, error); }).result();
}

void PluginFixture::answerGroup(qint64 group, const Array &slotNames, const QStringList &scans)
{
    SequencerCall &call = showGroup(group, {{"input", slotNames}});
    const QString name = groupButtons().at(group)->title();
    ASSERT_TRUE(waitForPanel(name));
    click(field(name + "-SharedInput"));
    for (const QString &text : scans)
        scan(text);
    press(name, "OK");
    ASSERT_TRUE(call.waitUntilFinished()) << "the group was not answered";
}

View *PluginFixture::rootView()
{
    return plugin().view();
}

platform::ScrollView *PluginFixture::scrollView()
{
    return firstOfKind<platform::ScrollView>(rootView());
}

platform::SplitView *PluginFixture::splitView()
{
    return firstOfKind<platform::SplitView>(rootView());
}

platform::CollectionView *PluginFixture::overviewOf(const QString &group)
{
    for (View *view : descendants(splitView())) {
        auto *overview = qobject_cast<platform::CollectionView *>(view);
        if (!overview || overview->content().isEmpty())
            continue;
        const qint64 system = overview->content().first().toMap().value("index").toLongLong();
        if (platform::description(plugin().systemIndexToGroupMapping().value(system)) == group)
            return overview;
    }
    return nullptr;
}

QList<Button *> PluginFixture::groupButtonsIn(const View *root)
{
    QList<Button *> found;
    for (View *child : root->subviews()) {
        auto *candidate = qobject_cast<Button *>(child);
        if (candidate && candidate->actionSelector() == "groupBtnClicked:")
            found.append(candidate);
    }
    return found;
}

TextField *PluginFixture::loopField()
{
    return field(QStringLiteral("Loop"));
}

View *PluginFixture::panel(const QString &panelKey)
{
    View *open = firstWithIdentifier(splitView(), panelKey, hasButtons);
    return open ? open : firstWithIdentifier(splitView(), panelKey, [](View *) { return true; });
}

bool PluginFixture::isOpen(const QString &panelKey)
{
    View *view = panel(panelKey);
    return view && hasButtons(view) && view->isVisible();
}

bool PluginFixture::waitForPanel(const QString &panelKey)
{
    const bool opened = waitUntil([&] { return isOpen(panelKey); });
    EXPECT_TRUE(opened) << "no panel " << panelKey.toStdString() << " opened";
    return opened;
}

bool PluginFixture::waitForPanelGone(const QString &panelKey)
{
    const bool gone = waitUntil([&] { return !isOpen(panelKey); });
    EXPECT_TRUE(gone) << "the panel " << panelKey.toStdString() << " did not go";
    return gone;
}

TextField *PluginFixture::field(const QString &identifier)
{
    return qobject_cast<TextField *>(firstWithIdentifier(
        rootView(), identifier, [](View *view) { return qobject_cast<TextField *>(view) != nullptr; }));
}

View *PluginFixture::view(const QString &identifier)
{
    return firstWithIdentifier(rootView(), identifier, [](View *) { return true; });
}

Button *PluginFixture::button(const QString &panelKey, const QString &title)
{
    View *view = panel(panelKey);
    return view ? confirmButton(view, [&](Button *candidate) { return candidate->title() == title; })
                : nullptr;
}

Button *PluginFixture::groupButton(const QString &group)
{
    for (Button *candidate : groupButtons()) {
        if (candidate->title() == group)
            return candidate;
    }
    return nullptr;
}

bool PluginFixture::waitsForTurn(int calls)
{
    const bool waits = waitUntil([&] { return m_waitingForTurn == calls; });
    EXPECT_TRUE(waits) << m_waitingForTurn << " calls wait for their turn instead of " << calls;
    return waits;
}

void PluginFixture::type(const QString &text)
{
    QWindow *target = window().windowHandle();
    for (const QChar character : text) {
        if (character == QLatin1Char('\n'))
            QTest::keyClick(target, Qt::Key_Return);
        else
            QTest::sendKeyEvent(QTest::Click, target, QTest::asciiToKey(character.toLatin1()),
                                QString(character), Qt::NoModifier);
    }
}

void PluginFixture::scan(const QString &text)
{
    type(text + QLatin1Char('\n'));
}

void PluginFixture::click(QWidget *view)
{
    ASSERT_NE(view, nullptr) << "there is nothing to click";
    const QPoint position = view->mapTo(&window(), view->rect().center());
    QWidget *hit = window().childAt(position);
    ASSERT_TRUE(hit && (hit == view || view->isAncestorOf(hit)))
        << "the view cannot be clicked: hidden or covered";
    QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {}, position);
}

void PluginFixture::press(const QString &panelKey, const QString &title)
{
    Button *target = button(panelKey, title);
    ASSERT_NE(target, nullptr) << "no button " << title.toStdString() << " on panel "
                               << panelKey.toStdString();
    click(target);
    settle();
}

void PluginFixture::settle()
{
    // Confirmations run one after another: when that of a button that is already gone has been logged, those
    // before it have ended. It has no panel, so it touches nothing.
    const int before = timesLoggedFrom(goneButtonLine);
    {
        View parent;
        parent.setIdentifier(Identifier(QStringLiteral("gone")));
        auto *gone = new Button(&parent);
        rooms().confirmation.confirmBtnClicked(gone);
    }
    EXPECT_TRUE(waitUntil([&] {
        return timesLoggedFrom(goneButtonLine) > before && !rooms().keys.isHolding();
    })) << "the confirmations did not end";
}

QString PluginFixture::fieldsInLog()
{
    settle();
    QString list;
    for (const LogRecorder::Line &line : log.proxyLines()) {
        if (line.message.startsWith(goneButtonLine))
            list = line.message.mid(goneButtonLine.size()).trimmed();
    }
    return list;
}

bool PluginFixture::knowsFieldsOf(const QString &panelKey)
{
    const QString list = fieldsInLog();
    return list.startsWith('{' + panelKey + " = ") || list.contains("; " + panelKey + " = ");
}

Dictionary PluginFixture::record(const QString &panelKey)
{
    return plugin().savedData().value(panelKey).toMap();
}

Dictionary PluginFixture::status(const QString &panelKey)
{
    return plugin().enableStatus().value(panelKey).toMap();
}

int PluginFixture::timesLogged(KVKLogLevel level, const QString &line) const
{
    const int times = log.count(level, line);
    EXPECT_GE(times, 0) << "the two logs do not agree about: " << line.toStdString();
    return times;
}

::testing::AssertionResult PluginFixture::loggedOnce(KVKLogLevel level, const QString &line) const
{
    const int times = timesLogged(level, line);
    if (times == 1)
        return ::testing::AssertionSuccess();
    ::testing::AssertionResult failure = ::testing::AssertionFailure();
    failure << "logged " << times << " times: " << line.toStdString() << "\nthere is:\n";
    for (const LogRecorder::Line &other : log.proxyLines())
        failure << "    " << other.message.toStdString() << '\n';
    return failure;
}

int PluginFixture::timesLoggedFrom(const QString &beginning) const
{
    const std::vector<LogRecorder::Line> lines = log.proxyLines();
    return static_cast<int>(std::ranges::count_if(
        lines, [&](const LogRecorder::Line &line) { return line.message.startsWith(beginning); }));
}

} // namespace testsupport
