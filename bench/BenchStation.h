#pragma once

#include "platform/Button.h"
#include "platform/TextField.h"
#include "plugin/InteractiveView.h"

#include <QWidget>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace bench {

/// A station of two groups with a window that shows the plug-in's view, for one benchmark.
///
/// Thread: the main thread.
class BenchStation
{
public:
    explicit BenchStation(int slotsPerGroup);
    ~BenchStation();
    BenchStation(const BenchStation &) = delete;
    BenchStation &operator=(const BenchStation &) = delete;

    [[nodiscard]] interactive::InteractiveView &plugin() { return *m_plugin; }

    /// Runs a sequence's work on a thread of its own and serves the main thread until it has ended.
    void runSequence(const std::function<void()> &work);
    /// Starts a sequence's work; finishSequence() waits for it.
    void startSequence(const std::function<void()> &work);
    void finishSequence();
    /// Serves the main thread until the condition holds.
    static void serveUntil(const std::function<bool()> &condition);

    /// The visible view with the identifier, or null.
    [[nodiscard]] platform::View *find(const QString &identifier);
    /// The direct button of the panel with the title, or null.
    [[nodiscard]] platform::Button *button(const QString &panelKey, const QString &title);
    /// Key events to the window; "\n" is Return.
    void type(const QString &text);

    /// "S1" and so on.
    [[nodiscard]] static QString slotName(int slot);

private:
    std::unique_ptr<interactive::InteractiveView> m_plugin;
    std::unique_ptr<QWidget> m_window;
    std::jthread m_sequence;
    std::atomic<bool> m_ended{true};
};

} // namespace bench
