#include "groups/GroupButtons.h"

#include <algorithm>

#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

namespace {

constexpr double ButtonWidth = 80.0;
constexpr double ButtonHeight = 30.0;
/// A button and the room to the next one: 16 points where they are set up, 8 where they are laid out anew.
constexpr double SetupPitch = 96.0;
constexpr double RelayoutPitch = 88.0;
/// A button's height and 4 points between two rows.
constexpr double RowPitch = 34.0;
/// The loop field and its caption end here.
constexpr double RightEdgeOfLoop = 160.0;

/// How the buttons are divided into rows, in a root view of some width.
struct Rows
{
    quint64 first = 0; ///< 1 where the loop field leaves no room beside it.
    quint64 length = 1;
    quint64 count = 1;

    Rows(double width, quint64 buttons)
    {
        const double beside = width - RightEdgeOfLoop;
        first = beside < SetupPitch ? 1 : 0;
        const double room = first == 1 ? width : beside;
        length = std::clamp<quint64>(static_cast<quint64>(std::max(room, SetupPitch) / SetupPitch), 1,
                                     std::max<quint64>(buttons, 1));
        count = (buttons + length - 1) / length;
    }
    /// How much higher they stand than one row beside the loop field does.
    [[nodiscard]] double extraHeight() const
    {
        return RowPitch * static_cast<double>(first + std::max<quint64>(count, 1) - 1);
    }
    [[nodiscard]] platform::Point origin(quint64 i, const platform::Size &around) const
    {
        return {around.width() - SetupPitch * static_cast<double>(length - i % length),
                around.height() - ButtonHeight - RowPitch * static_cast<double>(first + i / length)};
    }
};

platform::Button *firstMatch(const QList<platform::Button *> &buttons, const platform::Identifier &identifier)
{
    for (platform::Button *button : buttons) {
        const platform::Identifier name = identifiers::before(identifiers::Separator, button->identifier());
        if (!identifier.isNull() && name == identifier)
            return button;
    }
    return nullptr;
}

platform::Button *makeGroupButton(const platform::Point &origin, const platform::Identifier &name)
{
    auto button =
        std::make_unique<platform::Button>(platform::Rect(origin, platform::Size(ButtonWidth, ButtonHeight)));
    button->setButtonType(platform::Button::Type::Switch);
    button->setBezelStyle(platform::Button::BezelStyle::RegularSquare);
    // Title and identifier are both the name: the one is read, the other found.
    button->setTitle(name.text());
    button->setIdentifier(name);
    button->setSpokenName(QStringLiteral("Group %1").arg(name.text()));
    button->setState(platform::Button::On);
    button->setAutoresizingMask(platform::MinXMargin | platform::MinYMargin);
    return button.release();
}

/// The slots that a group's states begin with, counted from the group's position.
platform::Array slotsOf(const StationMap &station, quint64 group)
{
    platform::Array names;
    for (quint64 j = 0; j < station.slotCount(); ++j) {
        // A mapping laid out by hand may be shorter than groups times slots.
        const platform::Value slot = station.slotOf(static_cast<qint64>(station.slotCount() * group + j));
        if (slot.isValid())
            names.append(slot);
    }
    return names;
}

} // namespace

GroupButtons::GroupButtons(const StationMap &station, SlotStates &slotStates, Waits &waits, PanelViews &views,
                           Focus &focus)
    : m_station(station)
    , m_slotStates(slotStates)
    , m_waits(waits)
    , m_views(views)
    , m_focus(focus)
{}

void GroupButtons::setupGroupButtons(QObject *target)
{
    if (!m_buttons.lock()->isEmpty())
        return;
    platform::View *root = m_views.rootView();
    const platform::Rect bounds = root ? root->bounds() : platform::Rect();
    const quint64 count = m_station.groupCount();
    const Rows rows(bounds.width(), count);
    for (quint64 i = 0; i < count; ++i) {
        const platform::Value &group = m_station.groupNames().at(static_cast<qsizetype>(i));
        // The canonical instance: a click hides the panel that bears this very one.
        const platform::Identifier name = m_waits.panelKey(platform::description(group));
        platform::Button *button = makeGroupButton(rows.origin(i, bounds.size()), name);
        button->setTarget(target, selectors::GroupBtnClicked,
                          [this](platform::View *sender) { groupBtnClicked(sender); });
        if (root)
            root->addSubview(button);
        // Locked for this alone: a call on another thread may ask for a group meanwhile.
        m_buttons.lock()->append(button);
        // Nobody can wait yet, since the view is only being loaded.
        m_waits.makeCondition(name);
        m_slotStates.setUp(name.text(), slotsOf(m_station, i));
    }
    if (!root || !m_views.scrollView())
        return;
    const platform::Rect panels = m_views.scrollView()->frame();
    m_upperMargin = bounds.height() - panels.y() - panels.height();
    layOut();
    QObject::connect(root, &platform::View::frameChanged, target, [this] { layOut(); });
}

void GroupButtons::layOut()
{
    const platform::View *root = m_views.rootView();
    platform::View *panels = m_views.scrollView();
    if (!root || !panels)
        return;
    const platform::Size size = root->bounds().size();
    const QList<platform::Button *> buttons = groupButtons();
    const Rows rows(size.width(), static_cast<quint64>(buttons.size()));
    for (qsizetype i = 0; i < buttons.size(); ++i)
        buttons.at(i)->setFrameOrigin(rows.origin(static_cast<quint64>(i), size));
    const platform::Rect frame = panels->frame();
    const double height = std::max(0.0, size.height() - m_upperMargin - rows.extraHeight() - frame.y());
    panels->setFrame({frame.x(), frame.y(), frame.width(), height});
}

QList<platform::Button *> GroupButtons::groupButtons()
{
    QList<platform::Button *> buttons;
    const auto guard = m_buttons.lock();
    for (const QPointer<platform::Button> &button : *guard) {
        if (button)
            buttons.append(button);
    }
    return buttons;
}

void GroupButtons::relayoutGroupButtons(double width)
{
    quint64 i = 0;
    for (platform::Button *button : groupButtons()) {
        const double x =
            width - RelayoutPitch * (static_cast<double>(m_station.groupCount()) - static_cast<double>(i));
        button->setFrame({x, button->frame().y(), ButtonWidth, ButtonHeight});
        button->setHidden(false);
        ++i;
    }
}

void GroupButtons::groupBtnClicked(platform::View *sender)
{
    const QString method = selectors::bracketed(selectors::GroupBtnClicked);
    auto *button = qobject_cast<platform::Button *>(sender);
    if (!button) {
        log::error(messages::InvalidSender, {method, log::describe(sender)});
        return;
    }
    const platform::Identifier key = identifiers::before(identifiers::Separator, button->identifier());
    log::debug(messages::GroupClicked, {method, key, button->title(), static_cast<int>(button->state())});

    const QList<platform::Button *> buttons = groupButtons();
    // The toolkit has switched the button already: the one that was the last on goes back on.
    const bool anyOn = std::any_of(buttons.cbegin(), buttons.cend(), [](const platform::Button *other) {
        return other->state() == platform::Button::On;
    });
    if (!anyOn) {
        button->setState(platform::Button::On);
        log::debug(messages::LastGroupKept, {method, button->title()});
    }
    if (button->state() == platform::Button::On) {
        m_focus.unhideUI(key);
        return;
    }
    m_views.hideUI(key);
    log::standard(messages::GroupOff, {method, key});
}

bool GroupButtons::isGroupOn(const platform::Identifier &identifier)
{
    const platform::Button *button = firstMatch(groupButtons(), identifier);
    // A name without a button counts as on: what cannot be switched on again must not be hidden.
    return !button || button->state() != platform::Button::Off;
}

void GroupButtons::enableGroupButton(bool enable, const platform::Identifier &identifier)
{
    if (platform::Button *button = firstMatch(groupButtons(), identifier))
        button->setEnabled(enable);
}

void GroupButtons::turnOnGroupButton(bool on, const platform::Identifier &identifier)
{
    if (platform::Button *button = firstMatch(groupButtons(), identifier))
        button->setState(on ? platform::Button::On : platform::Button::Off);
}

int GroupButtons::getGroupButtonState(const platform::Identifier &identifier)
{
    const platform::Button *button = firstMatch(groupButtons(), identifier);
    return button ? button->state() : platform::Button::On;
}

} // namespace interactive
