#pragma once

#include "platform/Button.h"
#include "platform/TextField.h"
#include "plugin/InteractiveView.h"
#include "station/operator/OperatorHands.h"

#include <QHash>
#include <QMap>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

namespace soak {

/// A station's plug-in in a window, with an operator's hands. Its groups are G1, G2, …, each with the slots
/// S1, S2, …
///
/// Thread: the main thread. Requires: a QApplication, platform::MainQueue attached. There is one at a time.
class SoakStation
{
public:
    SoakStation(int groups, int slotsPerGroup);
    /// Requires: no call is under way.
    ~SoakStation();
    SoakStation(const SoakStation &) = delete;
    SoakStation &operator=(const SoakStation &) = delete;

    [[nodiscard]] interactive::InteractiveView &plugin() { return *m_plugin; }

    /// Serves events until the condition holds. Errors: ends the program, with what is waited for, when it
    /// does not within minutes.
    static void serveUntil(const QString &what, const std::function<bool()> &condition);

    /// The panel's button with the title, when it can be seen; otherwise null.
    [[nodiscard]] platform::Button *button(const QString &panelKey, const QString &title);
    /// The field, when it can be seen; otherwise null.
    [[nodiscard]] platform::TextField *field(const QString &identifier);
    /// All fields that can be seen, by identifier.
    [[nodiscard]] QHash<QString, QPointer<platform::TextField>> fields();
    /// The answering button of the same panel, by its title.
    [[nodiscard]] static platform::Button *buttonBeside(const platform::TextField *field,
                                                        const QString &title);
    /// The panel's switch of a slot.
    [[nodiscard]] platform::Button *slotSwitch(const QString &panelKey, const QString &slot);

    /// How many panels with buttons stand.
    [[nodiscard]] int openPanels();

    // Real events, without a pause
    void click(platform::View *view) { m_hands->click(view); }
    void type(const QString &text) { m_hands->type(text); }

    /// How much the owners of the plug-in's state keep.
    [[nodiscard]] QMap<QString, qint64> kept();

private:
    [[nodiscard]] platform::View *panel(const QString &panelKey);

    std::unique_ptr<interactive::InteractiveView> m_plugin;
    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<station::OperatorHands> m_hands;
};

} // namespace soak
