#include "layout/SlotControls.h"

#include "input/Identifiers.h"
#include "input/SlotLabels.h"
#include "layout/PanelDrawing.h"
#include "layout/SlotBox.h"
#include "platform/Button.h"
#include "plugin/InteractiveView.h"
#include "plugin/Selectors.h"
#include "presentation/VerticallyCenteredTextFieldCell.h"

namespace interactive {

namespace {

constexpr double DisplayFontSize = 12.0;
constexpr double PassShadowRadius = 2.0;
/// Marks a slot that is on but takes no part in the panel: it waits for no input.
constexpr qlonglong TakesNoInput = -1;

QString withColon(const QString &text)
{
    return text + QLatin1Char(':');
}

} // namespace

std::unique_ptr<MouseTrackedTextField>
makeInputField(const platform::Rect &frame, const platform::Identifier &parentIdentifier, double fontSize)
{
    auto field = std::make_unique<MouseTrackedTextField>(frame);
    auto cell = std::make_unique<VerticallyCenteredTextFieldCell>();
    cell->setBezeled(true);
    cell->setBezelStyle(platform::TextFieldCell::BezelStyle::Square);
    field->setCell(std::move(cell));
    field->setParentIdentifier(parentIdentifier);
    field->setFont(platform::Font::system(fontSize));
    field->setDrawsBackground(true);
    field->setMaximumNumberOfLines(1);
    return field;
}

void InteractiveView::drawGroupControls(PanelDrawing &drawing, SlotBox &slotBox)
{
    if (slotBox.label)
        slotBox.label->setStringValue(withColon(drawing.plan.label));
    slotBox.tag = systemIndexToTag(slotBox.tile->systemIndex());
    if (!drawing.plan.hasSwitches())
        drawDisplayField(drawing, slotBox);
    drawSwitch(drawing, slotBox);
}

void InteractiveView::drawDisplayField(PanelDrawing &drawing, const SlotBox &slotBox) const
{
    const platform::Identifier &key = drawing.plan.panelKey;
    auto field = makeInputField(drawing.geometry.displayField(), key, DisplayFontSize);
    field->setSystemIndex(slotBox.tile->systemIndex());
    field->setBordered(false);
    field->setEditable(false);
    field->setBackgroundColor(platform::Color::white().withAlphaComponent(2.0 * backgroundAlpha()));
    field->setIdentifier(identifiers::named(key.text(), platform::description(slotBox.slot)));
    field->setTag(slotBox.tag);
    drawing.fields.append(field.get());
    slotBox.content->addSubview(field.release());
}

void InteractiveView::drawSwitch(PanelDrawing &drawing, const SlotBox &slotBox)
{
    const double y = drawing.geometry.switchRowY(drawing.plan.hasSwitches());
    if (slotBox.caption) {
        slotBox.caption->setFrame(drawing.geometry.captionBesideSwitch(y, slotBox.caption->frame().height()));
    }
    auto button = std::make_unique<platform::Button>(drawing.geometry.slotSwitch(y));
    button->setBezelStyle(platform::Button::BezelStyle::RegularSquare);
    button->setIdentifier(
        identifiers::indexed(drawing.plan.panelKey.text(), slotBox.tag, platform::description(slotBox.slot)));
    button->setTag(slotBox.tag);
    button->setBordered(true);
    button->setTitle(QString());
    button->setButtonType(platform::Button::Type::Switch);
    button->setTarget(this, selectors::SwitchBtnClicked,
                      [this](platform::View *sender) { switchBtnClicked(sender); });
    button->setState(platform::Button::On);
    platform::Button *drawn = button.get();
    slotBox.content->addSubview(button.release());
    takeInitialSwitchState(drawing, slotBox, *drawn);
}

void InteractiveView::takeInitialSwitchState(const PanelDrawing &drawing, const SlotBox &slotBox,
                                             platform::Button &button)
{
    const QString key = drawing.plan.panelKey.text();
    const QString slot = platform::description(slotBox.slot);
    const platform::Value entry = m_enableStatus.lock()->value(key);
    if (!entry.isValid() || !slotBox.slot.isValid())
        return;
    // Any number but 0 counts as on, a negative one included.
    if (platform::integerValue(entry.toMap().value(slot)) == 0) {
        button.setState(platform::Button::Off);
        switchBtnClicked(&button);
        return;
    }
    if (labels::contains(drawing.plan.inputs, slotBox.slot))
        return;
    const auto enableStatus = m_enableStatus.lock();
    platform::Dictionary status = enableStatus->value(key).toMap();
    status.insert(slot, TakesNoInput);
    enableStatus->insert(key, status);
}

void InteractiveView::drawSlotControls(PanelDrawing &drawing, SlotBox &slotBox)
{
    PanelPlan &plan = drawing.plan;
    if (plan.hasInputs())
        plan.label = platform::description(plan.inputs.first());
    if (slotBox.label)
        slotBox.label->setStringValue(withColon(plan.label));
    if (plan.hasFields())
        drawEntryField(drawing, slotBox);
    drawSlotButtons(drawing, slotBox);
    slotBox.content->setIdentifier(plan.panelKey);
}

void InteractiveView::drawEntryField(PanelDrawing &drawing, const SlotBox &slotBox)
{
    const platform::Identifier &key = drawing.plan.panelKey;
    auto field = makeInputField(drawing.geometry.entryField(), key, drawing.geometry.fieldFontSize());
    field->setBordered(true);
    field->setEditable(true);
    field->setAutoresizingMask(platform::MinYMargin);
    field->setTarget(this, selectors::CheckInput, [this](platform::View *sender) { checkInput(sender); });
    field->setIdentifier(identifiers::named(key.text(), drawing.plan.label));
    drawing.fields.append(field.get());
    slotBox.content->addSubview(field.release());
}

void InteractiveView::drawSlotButtons(PanelDrawing &drawing, const SlotBox &slotBox)
{
    const qsizetype count = drawing.plan.buttons.size();
    for (qsizetype j = 0; j < count; ++j) {
        auto button = makePanelButton(drawing.geometry.slotButton(j, count), drawing.plan, j);
        button->setAutoresizingMask(platform::MinYMargin);
        button->setFont(platform::Font::system(drawing.geometry.slotButtonFontSize()));
        if (button->identifier().text() == identifiers::Pass) {
            button->setWantsLayer(true);
            button->setShadow(platform::Shadow{platform::Color::systemBlue(), PassShadowRadius, {0.0, 0.0}});
        }
        slotBox.content->addSubview(button.release());
    }
}

std::unique_ptr<platform::Button> InteractiveView::makePanelButton(const platform::Rect &frame,
                                                                   const PanelPlan &plan, qsizetype position)
{
    auto button = std::make_unique<platform::Button>(frame);
    button->setTitle(plan.buttons.at(position));
    button->setBezelStyle(platform::Button::BezelStyle::RegularSquare);
    button->setIdentifier(plan::buttonIdentifier(plan, position));
    button->setTarget(this, selectors::ConfirmBtnClicked,
                      [this](platform::View *sender) { confirmBtnClicked(sender); });
    return button;
}

} // namespace interactive
