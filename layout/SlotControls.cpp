#include "layout/PanelDrawing.h"
#include "layout/PanelParts.h"
#include "layout/SlotBox.h"
#include "layout/SlotBoxes.h"
#include "layout/SpokenNames.h"
#include "platform/Button.h"

#include <utility>

#include "common/Identifiers.h"
#include "common/Selectors.h"
#include "common/SlotLabels.h"

namespace interactive {

namespace {

constexpr double DisplayFontSize = 12.0;
constexpr double UnitFontSize = 12.0;
constexpr double PassShadowRadius = 2.0;

/// The slot's own name, on a group's panel too.
QString whose(const PanelDrawing &drawing, const SlotBox &slotBox)
{
    return spoken::whose(platform::description(slotBox.slot), drawing.plan.subject.groupName.text());
}

QString withColon(const QString &text)
{
    return text + QLatin1Char(':');
}

} // namespace

void SlotBoxes::drawGroupControls(PanelDrawing &drawing, SlotBox &slotBox)
{
    if (slotBox.label)
        slotBox.label->setStringValue(withColon(drawing.plan.label));
    slotBox.tag = identifiers::tagOfSystem(platform::integerValue(slotBox.tile->systemIndex()));
    if (!drawing.plan.hasSwitches())
        drawDisplayField(drawing, slotBox);
    drawUnit(drawing, slotBox);
    drawSwitch(drawing, slotBox);
}

void SlotBoxes::drawDisplayField(PanelDrawing &drawing, const SlotBox &slotBox) const
{
    const platform::Identifier &key = drawing.plan.subject.panelKey;
    auto field = parts::inputField(drawing.geometry.displayField(), key, DisplayFontSize);
    field->setSystemIndex(slotBox.tile->systemIndex());
    field->setBordered(false);
    field->setEditable(false);
    field->setBackgroundColor(SlotColors::valueColor(drawing.plan.look));
    field->setIdentifier(identifiers::named(key.text(), platform::description(slotBox.slot)));
    field->setTag(slotBox.tag);
    // Who has no mouse opens a slot again from here.
    field->setFocusPolicy(Qt::TabFocus);
    field->setSpokenName(spoken::control(drawing.plan.label, whose(drawing, slotBox)));
    field->setSpokenDescription(QStringLiteral("F2 opens an entry again"));
    // What "OK" confirms is shown where it will stand, and is no entry until then.
    field->setPlaceholder(drawing.plan.rules->defaults.value(platform::description(slotBox.slot)));
    drawing.fields.append(field.get());
    parts::add(*slotBox.content, std::move(field));
}

void SlotBoxes::drawSwitch(PanelDrawing &drawing, const SlotBox &slotBox)
{
    const double y = drawing.geometry.switchRowY(drawing.plan.hasSwitches());
    if (slotBox.caption) {
        slotBox.caption->setFrame(drawing.geometry.captionBesideSwitch(y, slotBox.caption->frame().height()));
    }
    auto button =
        std::make_unique<platform::Button>(drawing.geometry.slotSwitch(y), platform::Button::Type::Switch);
    button->setBezelStyle(platform::Button::BezelStyle::RegularSquare);
    button->setIdentifier(identifiers::indexed(drawing.plan.subject.panelKey.text(), slotBox.tag,
                                               platform::description(slotBox.slot)));
    button->setTag(slotBox.tag);
    button->setBordered(true);
    button->setTitle(QString());
    button->setSpokenName(spoken::control(QStringLiteral("Use"), whose(drawing, slotBox)));
    button->setTarget(m_controller, selectors::SwitchBtnClicked,
                      [this](platform::View *sender) { m_switches.switchBtnClicked(sender); });
    button->setState(platform::Button::On);
    // In the box before its state is taken: a switch that is off looks for field and box from where it
    // stands.
    drawing.buttons.append(parts::add(*slotBox.content, std::move(button)));
    takeInitialSwitchState(drawing, slotBox, *drawing.buttons.last());
}

void SlotBoxes::takeInitialSwitchState(PanelDrawing &drawing, const SlotBox &slotBox,
                                       platform::Button &button)
{
    const QString slot = platform::description(slotBox.slot);
    if (!drawing.states || !slotBox.slot.isValid())
        return;
    // Any number but 0 counts as on, a negative one included.
    if (platform::integerValue(drawing.states->value(slot)) == 0) {
        button.setState(platform::Button::Off);
        // Who switches is told, and logs, how the slots before this one stand.
        divideSlots(drawing);
        // As if somebody had switched it off just now: box, field and record follow.
        m_switches.switchBtnClicked(&button);
        return;
    }
    // A slot that an earlier panel left out takes input again when this one lists it.
    (labels::contains(drawing.plan.inputs, slotBox.slot) ? drawing.takenIn : drawing.leftOut).append(slot);
}

/// For all slots at once: each change costs as much as the panel has slots.
void SlotBoxes::divideSlots(PanelDrawing &drawing)
{
    if (drawing.takenIn.isEmpty() && drawing.leftOut.isEmpty())
        return;
    m_slotStates.divide(drawing.plan.subject.panelKey.text(), std::exchange(drawing.takenIn, {}),
                        std::exchange(drawing.leftOut, {}));
}

void SlotBoxes::drawSlotControls(PanelDrawing &drawing, SlotBox &slotBox)
{
    PanelPlan &plan = drawing.plan;
    // The input's name is what the entry is stored under.
    if (plan.hasInputs())
        plan.label = platform::description(plan.inputs.first());
    if (slotBox.label)
        slotBox.label->setStringValue(withColon(plan.label));
    if (plan.hasFields()) {
        auto field = parts::entryField(drawing.geometry.entryField(), plan.subject.panelKey, plan.label,
                                       drawing.geometry.fieldFontSize(), {m_controller, m_entries});
        parts::ask(*field, *plan.rules, spoken::control(plan.label, whose(drawing, slotBox)),
                   spoken::askedFor(*plan.rules, plan.label, plan.length));
        drawing.fields.append(field.get());
        parts::add(*slotBox.content, std::move(field));
        drawUnit(drawing, slotBox);
        drawing.addStatusLine(*slotBox.content);
    }
    drawSlotButtons(drawing, slotBox);
    // By this the panel is found again: its buttons look up to it, and a tile that bears it is emptied when
    // the panel goes.
    slotBox.content->setIdentifier(plan.subject.panelKey);
    m_views.setBox(plan.subject.panelKey.text(), slotBox.box);
    drawing.box = slotBox.content;
}

/// A measured value is nothing without its unit.
void SlotBoxes::drawUnit(const PanelDrawing &drawing, const SlotBox &slotBox) const
{
    const QString label =
        drawing.plan.isGroupPanel() ? platform::description(slotBox.slot) : drawing.plan.label;
    const std::optional<NumberRule> &number = drawing.plan.rules->of(label).number;
    if (!number || number->unit.isEmpty())
        return;
    platform::TextField *unit =
        parts::add(*slotBox.content,
                   parts::label(drawing.geometry.unit(), platform::Font::system(UnitFontSize), number->unit));
    unit->setTextColor(textColor(drawing, slotBox));
}

void SlotBoxes::drawSlotButtons(PanelDrawing &drawing, const SlotBox &slotBox)
{
    const qsizetype count = drawing.plan.buttons.size();
    for (qsizetype j = 0; j < count; ++j) {
        auto button = parts::confirmButton(
            drawing.geometry.slotButton(j, count), drawing.plan.buttons.at(j),
            plan::buttonIdentifier(drawing.plan, j), drawing.geometry.slotButtonFontSize(),
            {m_controller, [this](platform::View *sender) { m_confirmation.confirmBtnClicked(sender); }});
        button->setAutoresizingMask(platform::MinYMargin);
        button->setSpokenName(spoken::control(drawing.plan.buttons.at(j), whose(drawing, slotBox)));
        if (button->identifier().text() == identifiers::Pass) {
            // The button that passes stands out among those that do not.
            button->setShadow(platform::Shadow{platform::Color::systemBlue(), PassShadowRadius, {0.0, 0.0}});
        }
        drawing.buttons.append(parts::add(*slotBox.content, std::move(button)));
    }
}

} // namespace interactive
