#include "layout/SlotBoxes.h"

#include "layout/PanelDrawing.h"
#include "layout/PanelParts.h"
#include "layout/SlotBox.h"
#include "presentation/ColorEngine.h"

#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"
#include "common/SlotLabels.h"
#include "common/StationIndex.h"

namespace interactive {

namespace {

constexpr double CaptionFontSize = 15.0;
constexpr double LabelFontSize = 13.0;
constexpr double GroupNameFontSize = 11.0;

QString blockName()
{
    return selectors::blockName(selectors::DrawUI);
}

} // namespace

SlotBoxes::SlotBoxes(const StationMap &station, SlotStates &slotStates, PanelViews &views,
                     const SlotColors &colors, Switches &switches, Entries &entries,
                     Confirmation &confirmation, QObject *controller)
    : m_station(station)
    , m_slotStates(slotStates)
    , m_views(views)
    , m_colors(colors)
    , m_switches(switches)
    , m_entries(entries)
    , m_confirmation(confirmation)
    , m_controller(controller)
{}

void SlotBoxes::draw(PanelDrawing &drawing)
{
    const platform::CollectionView *overview = m_views.collection(drawing.plan.subject.groupName.text());
    if (!overview)
        return;
    // Once: each switch changes, and asks for, its own slot's state alone.
    const platform::Value states = m_slotStates.of(drawing.plan.subject.panelKey.text());
    if (states.isValid())
        drawing.states = states.toMap();
    const auto draw = [&](quint64 slot) {
        if (auto *tile = qobject_cast<CollectionViewItem *>(overview->itemAtIndex(static_cast<qint64>(slot))))
            drawTile(drawing, *tile, slot);
    };
    if (drawing.plan.subject.systemIndex.isValid()) {
        if (const std::optional<quint64> slot = slotOf(drawing.plan.subject))
            draw(*slot);
    } else {
        for (quint64 slot = 0; slot < m_station.slotCount(); ++slot)
            draw(slot);
    }
    divideSlots(drawing);
}

/// Where in its group the system of a slot's panel stands. Nothing for one of another group.
std::optional<quint64> SlotBoxes::slotOf(const PanelSubject &subject) const
{
    // With one slot a group, the only tile is the system's.
    if (m_station.slotCount() < 2)
        return 0;
    const quint64 first = subject.groupNumber * m_station.slotCount();
    // Not by looking through the slots: the panels of all of them are drawn at once.
    const qlonglong system = subject.systemIndex.toLongLong();
    const bool isHere = system >= 0 && static_cast<quint64>(system) >= first &&
                        static_cast<quint64>(system) - first < m_station.slotCount() &&
                        labels::isEqual(system, subject.systemIndex);
    return isHere ? std::optional(static_cast<quint64>(system) - first) : std::nullopt;
}

void SlotBoxes::drawTile(PanelDrawing &drawing, CollectionViewItem &tile, quint64 slot)
{
    if (!tile.box())
        return;
    SlotBox slotBox;
    slotBox.tile = &tile;
    slotBox.systemIndex =
        static_cast<qulonglong>(drawing.plan.subject.groupNumber * m_station.slotCount() + slot);
    const platform::Value &given = drawing.plan.subject.systemIndex;
    if (given.isValid()) {
        slotBox.systemIndex = given;
    } else if (slotBox.systemIndex.toLongLong() >= m_station.systemIndexToSlotMapping().size()) {
        // A mapping laid out by hand may leave the last group with fewer systems than tiles.
        tile.box()->setHidden(true);
        return;
    }
    drawSlotBox(drawing, slotBox);
}

void SlotBoxes::drawSlotBox(PanelDrawing &drawing, SlotBox &slotBox)
{
    const PanelPlan &plan = drawing.plan;
    log::standard(messages::BoxStarted, {blockName(), plan.subject.panelKey, slotBox.systemIndex});
    slotBox.slot = elementAt(m_station.systemIndexToSlotMapping(), slotBox.systemIndex, selectors::DrawUI,
                             "system index");
    log::debug(messages::BoxSlot, {blockName(), slotBox.slot, plan.inputs});

    slotBox.box = slotBox.tile->box();
    slotBox.content = slotBox.box->contentView();
    // A slot's box is shown when all stands in it: what is put into a visible one has it laid out each time.
    slotBox.box->setHidden(!plan.isGroupPanel() || !labels::contains(plan.inputs, slotBox.slot));
    const platform::Rect frame = drawing.geometry.box();
    slotBox.box->setFrame(frame);
    log::debug(messages::BoxFrame,
               {plan.subject.groupName, slotBox.slot, frame.x(), frame.y(), frame.width(), frame.height()});
    slotBox.box->setAutoresizingMask(platform::MaxXMargin);
    slotBox.box->setFillColor(m_colors.boxColor(slotBox.systemIndex, plan.look));
    if (plan.look.drawShadow)
        slotBox.box->setShadow(SlotColors::boxShadow());
    slotBox.tile->setSystemIndex(slotBox.systemIndex);
    slotBox.box->setAccessibleName(
        QStringLiteral("Slot %1, group %2")
            .arg(platform::description(slotBox.slot), plan.subject.groupName.text()));
    // A tile keeps what the panel before drew into it.
    for (platform::View *view : slotBox.content->subviews())
        view->removeFromSuperview();

    slotBox.caption = drawCaption(drawing, slotBox);
    slotBox.label = drawLabelOrMessage(drawing, slotBox);
    if (plan.isGroupPanel()) {
        drawGroupControls(drawing, slotBox);
        return;
    }
    drawSlotControls(drawing, slotBox);
    slotBox.box->setHidden(false);
}

/// The caption is the slot's name; the panel's title only decides that there is one, and a panel always has a
/// title.
platform::TextField *SlotBoxes::drawCaption(const PanelDrawing &drawing, const SlotBox &slotBox)
{
    platform::TextField *caption =
        parts::add(*slotBox.content,
                   parts::label(drawing.geometry.caption(), platform::Font::boldSystem(CaptionFontSize),
                                platform::description(slotBox.slot)));
    caption->setAlignment(platform::TextAlignment::Center);
    caption->setSpokenRole(QAccessible::Heading);
    caption->setTextColor(textColor(drawing, slotBox));
    // A group panel is headed by its group's name; a slot's panel may stand alone in sight.
    if (!drawing.plan.isGroupPanel() && m_station.groupCount() > 1) {
        const double captionTextWidth = caption->font().widthOf(caption->stringValue());
        platform::TextField *name =
            parts::add(*slotBox.content, parts::label(drawing.geometry.groupName(captionTextWidth),
                                                      platform::Font::system(GroupNameFontSize),
                                                      drawing.plan.subject.groupName.text()));
        name->setTextColor(textColor(drawing, slotBox));
    }
    return caption;
}

platform::Color SlotBoxes::textColor(const PanelDrawing &drawing, const SlotBox &slotBox) const
{
    return m_colors.textColor(slotBox.systemIndex, drawing.plan.look.backgroundAlpha);
}

/// The label of a field, whose text is set with the field; or the panel's message where nothing is entered.
platform::TextField *SlotBoxes::drawLabelOrMessage(const PanelDrawing &drawing, const SlotBox &slotBox)
{
    const PanelPlan &plan = drawing.plan;
    if (plan.hasFields()) {
        platform::TextField *label =
            parts::add(*slotBox.content, parts::label(drawing.geometry.slotLabel(),
                                                      platform::Font::system(LabelFontSize), QString()));
        label->setTextColor(textColor(drawing, slotBox));
        // Its text follows with the field: on a slot's panel it is the name of the input.
        return label;
    }
    if (!plan.hasInputs() && !plan.message.isEmpty()) {
        platform::TextField *message = parts::add(
            *slotBox.content, parts::label(drawing.geometry.slotMessage(),
                                           platform::Font::system(plan.messageFontSize), plan.message));
        message->setTextColor(
            ColorEngine::colorForName(plan.messageColor).value_or(textColor(drawing, slotBox)));
        message->setAlignment(plan.messageAlignment);
    }
    return nullptr;
}

} // namespace interactive
