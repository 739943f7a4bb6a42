#include "input/SlotLabels.h"
#include "layout/Labels.h"
#include "layout/PanelDrawing.h"
#include "layout/SlotBox.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"
#include "plugin/StationIndex.h"
#include "presentation/ColorEngine.h"

namespace interactive {

namespace {

constexpr double CaptionFontSize = 15.0;
constexpr double LabelFontSize = 13.0;

QString blockName()
{
    return selectors::blockName(selectors::DrawUI);
}

} // namespace

void InteractiveView::drawSlotBoxes(PanelDrawing &drawing)
{
    const platform::CollectionView *overview = collection(drawing.plan.groupName.text());
    if (!overview)
        return;
    for (quint64 i = 0; i < m_slotCount; ++i) {
        SlotBox slotBox;
        slotBox.tile = qobject_cast<CollectionViewItem *>(overview->itemAtIndex(static_cast<qint64>(i)));
        if (!slotBox.tile || !slotBox.tile->box())
            continue;
        slotBox.systemIndex = static_cast<qulonglong>(drawing.plan.groupNumber * m_slotCount + i);
        const platform::Value &given = drawing.plan.systemIndex;
        if (given.isValid()) {
            // A slot panel draws its own box only; with one slot a group, the only tile is the system's.
            if (m_slotCount >= 2 && !labels::isEqual(slotBox.systemIndex, given))
                continue;
            slotBox.systemIndex = given;
        } else if (slotBox.systemIndex.toLongLong() >= m_systemIndexToSlotMapping.size()) {
            // A mapping laid out by hand may leave the last group with fewer systems than tiles.
            slotBox.tile->box()->setHidden(true);
            continue;
        }
        drawSlotBox(drawing, slotBox);
    }
}

void InteractiveView::drawSlotBox(PanelDrawing &drawing, SlotBox &slotBox)
{
    const PanelPlan &plan = drawing.plan;
    log::standard(messages::BoxStarted, {blockName(), plan.panelKey, slotBox.systemIndex});
    slotBox.slot =
        elementAt(m_systemIndexToSlotMapping, slotBox.systemIndex, selectors::DrawUI, "system index");
    log::debug(messages::BoxSlot, {blockName(), slotBox.slot, plan.inputs});

    slotBox.box = slotBox.tile->box();
    slotBox.content = slotBox.box->contentView();
    slotBox.box->setHidden(plan.isGroupPanel() && !labels::contains(plan.inputs, slotBox.slot));
    const platform::Rect frame = drawing.geometry.box();
    slotBox.box->setFrame(frame);
    log::debug(messages::BoxFrame,
               {plan.groupName, slotBox.slot, frame.x(), frame.y(), frame.width(), frame.height()});
    styleBox(slotBox);
    for (platform::View *view : slotBox.content->subviews())
        view->removeFromSuperview();

    slotBox.caption = drawCaption(drawing, slotBox);
    slotBox.label = drawLabelOrMessage(drawing, slotBox);
    if (plan.isGroupPanel())
        drawGroupControls(drawing, slotBox);
    else
        drawSlotControls(drawing, slotBox);
}

void InteractiveView::styleBox(SlotBox &slotBox)
{
    slotBox.box->setAutoresizingMask(platform::MaxXMargin);
    slotBox.tile->setSystemIndex(slotBox.systemIndex);
    slotBox.box->setFillColor(bgColor(slotBox.systemIndex).withAlphaComponent(backgroundAlpha()));
    if (drawShadow()) {
        slotBox.box->setWantsLayer(true);
        slotBox.box->setShadow(platform::Shadow{platform::Color::systemGray(), 2.0, {0.0, 0.0}});
    }
}

/// The caption is the slot's name; the panel's title only decides that there is one, and a panel always has a
/// title.
platform::TextField *InteractiveView::drawCaption(PanelDrawing &drawing, const SlotBox &slotBox)
{
    platform::TextField *caption =
        makeLabel(drawing.geometry.caption(), platform::Font::boldSystem(CaptionFontSize),
                  platform::description(slotBox.slot));
    caption->setAlignment(platform::TextAlignment::Center);
    caption->setTextColor(textColor(slotBox.systemIndex));
    slotBox.content->addSubview(caption);
    return caption;
}

/// The label of a field, whose text is set with the field; or the panel's message where nothing is entered.
platform::TextField *InteractiveView::drawLabelOrMessage(PanelDrawing &drawing, const SlotBox &slotBox)
{
    const PanelPlan &plan = drawing.plan;
    if (plan.hasFields()) {
        platform::TextField *label =
            makeLabel(drawing.geometry.slotLabel(), platform::Font::system(LabelFontSize), QString());
        label->setTextColor(textColor(slotBox.systemIndex));
        slotBox.content->addSubview(label);
        return label;
    }
    if (!plan.hasInputs() && !plan.message.isEmpty()) {
        platform::TextField *message = makeLabel(drawing.geometry.slotMessage(),
                                                 platform::Font::system(plan.messageFontSize), plan.message);
        message->setTextColor(
            ColorEngine::colorForName(plan.messageColor).value_or(textColor(slotBox.systemIndex)));
        message->setAlignment(plan.messageAlignment);
        slotBox.content->addSubview(message);
    }
    return nullptr;
}

} // namespace interactive
