#include "fuzz/ShowCallTrial.h"

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/Button.h"
#include "platform/MainQueue.h"
#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"

#include <chrono>

using platform::MainQueue;

namespace fuzz {

namespace {

/// Far more than a call takes on the busiest machine.
constexpr std::chrono::seconds Patience{60};

platform::Button *confirmButton(const platform::View *root)
{
    for (platform::View *child : root->subviews()) {
        auto *button = qobject_cast<platform::Button *>(child);
        if (button && button->actionSelector() == "confirmBtnClicked:")
            return button;
        if (platform::Button *below = confirmButton(child))
            return below;
    }
    return nullptr;
}

} // namespace

ShowCallTrial::ShowCallTrial(interactive::InteractiveView &plugin, bool forGroup, int number,
                             const platform::Dictionary &config, End end)
    : m_plugin(plugin)
{
    KVKExtensionStatusRelay::sharedStatusRelay()->setWaitHandler([this](const KVKCallWait &wait) {
        m_waits = !wait.what.isEmpty();
        MainQueue::wake();
    });
    m_thread = std::thread([this, forGroup, number, config] {
        m_result = forGroup ? m_plugin.showGroupView(number, config, &m_error)
                            : m_plugin.showView(number, config, &m_error);
        m_returned = true;
        MainQueue::wake();
    });
    const auto limit = std::chrono::steady_clock::now() + Patience;
    m_hasEnded = MainQueue::drainUntil([this] { return m_returned || m_waits; }, limit);
    if (end == End::Press && !m_returned) {
        // What draws the panel stands in the queue by now.
        MainQueue::serveSubmitted();
        press();
        m_hasEnded = MainQueue::drainUntil([this] { return m_returned.load(); }, limit);
    }
    m_plugin.interruptWaitingCalls();
    m_hasEnded = MainQueue::drainUntil([this] { return m_returned.load(); }, limit) && m_hasEnded;
    m_thread.join();
    m_plugin.acceptCalls();
    KVKExtensionStatusRelay::sharedStatusRelay()->setWaitHandler({});
}

ShowCallTrial::~ShowCallTrial() = default;

void ShowCallTrial::press()
{
    if (platform::Button *button = confirmButton(m_plugin.view()))
        m_plugin.rooms().confirmation.confirmBtnClicked(button);
}

} // namespace fuzz
