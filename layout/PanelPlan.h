#pragma once

#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "layout/PanelGeometry.h"
#include "platform/Identifier.h"
#include "platform/TextAlignment.h"
#include "platform/Value.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>

#include "common/AskRules.h"
#include "common/PanelSettings.h"
#include "common/PanelSubject.h"

namespace interactive {

/// What a show call asks the builder for.
struct PanelRequest
{
    platform::Dictionary config;
    platform::Array inputs;
    platform::Array switches;
    platform::Value buttons;
    PanelSubject subject;
    std::shared_ptr<const AskRules> rules = std::make_shared<const AskRules>();
    KVKGuidancePointer guidance = nullptr; ///< Null where there is nothing to be looked at.
};

/// What is to be drawn, derived from a configuration before any view is touched.
///
/// Thread: made on the calling thread, drawn on the main thread.
struct PanelPlan
{
    PanelKind kind = PanelKind::Group;
    PanelSubject subject;
    QString title;
    QString label;
    QString message;
    double messageFontSize = 15.0;
    QString messageColor;
    platform::TextAlignment messageAlignment = platform::TextAlignment::Center;
    quint64 columns = 0;
    qint64 length = 0; ///< Of an entry; 0 asks for none.
    PanelLook look;
    platform::Array inputs;
    qsizetype switchCount = 0;
    QStringList buttons;
    std::shared_ptr<const AskRules> rules = std::make_shared<const AskRules>();
    /// When the panel's time limit ends; known once it is drawn.
    std::optional<std::chrono::steady_clock::time_point> timeEnds = {};
    KVKGuidancePointer guidance = nullptr; ///< Null where there is nothing to be looked at.

    [[nodiscard]] bool isGroupPanel() const { return kind == PanelKind::Group; }
    /// A group's panel with a message shows it and waits for nothing.
    [[nodiscard]] bool isInformative() const { return isGroupPanel() && !message.isEmpty(); }
    [[nodiscard]] bool hasInputs() const { return !inputs.isEmpty(); }
    [[nodiscard]] bool hasSwitches() const { return switchCount > 0; }
    /// Fields are drawn for inputs, but not beside switches.
    [[nodiscard]] bool hasFields() const { return hasInputs() && !hasSwitches(); }
};

/// Rules for what a plan takes from a configuration. Thread: any.
namespace plan {

/// The whole plan. Settings that the configuration gives are in force from then on.
[[nodiscard]] PanelPlan made(const PanelRequest &request, quint64 slotCount, PanelSettings &settings);

/// The column count of a panel: the configuration's, else the one in force, else one column a slot.
[[nodiscard]] quint64 columns(const platform::Dictionary &config, quint64 current, quint64 slotCount);
[[nodiscard]] double messageFontSize(const platform::Dictionary &config);
/// "messageAlignment" 0 to 4, centred otherwise.
[[nodiscard]] platform::TextAlignment messageAlignment(const platform::Dictionary &config);
/// "title", or the group's name and, when it is known, the slot's.
[[nodiscard]] QString title(const platform::Dictionary &config, const QString &groupName,
                            const platform::Value &slot);
/// The titles of the button row. A group panel with inputs and every panel with switches have buttons of
/// their own.
[[nodiscard]] QStringList buttonTitles(const platform::Value &configured, PanelKind kind, bool hasInputs,
                                       bool hasSwitches);
/// The identifier of the i-th of n buttons: the last one is "Pass" unless the panel has both inputs and
/// switches.
[[nodiscard]] platform::Identifier buttonIdentifier(const PanelPlan &plan, qsizetype i);

} // namespace plan

} // namespace interactive
