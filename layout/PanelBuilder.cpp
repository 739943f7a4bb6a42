#include "input/Identifiers.h"
#include "layout/Labels.h"
#include "layout/PanelDrawing.h"
#include "layout/SlotControls.h"
#include "platform/Button.h"
#include "platform/MainQueue.h"
#include "platform/SplitView.h"
#include "plugin/Configuration.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"
#include "presentation/ColorEngine.h"

namespace interactive {

namespace {

constexpr double HeaderFontSize = 16.0;
constexpr double ButtonFontSize = 16.0;

} // namespace

void InteractiveView::drawUI(const platform::Dictionary &config, const platform::Array &inputs,
                             const platform::Array &switches, const platform::Value &buttons,
                             const platform::Value &groupIndex, const platform::Value &systemIndex)
{
    PanelPlan plan = planPanel(config, inputs, switches, buttons, groupIndex, systemIndex);
    takePanelSettings(config);
    m_columns = plan.columns;
    platform::MainQueue::sync([this, &plan] { drawPanel(plan); });
}

QString InteractiveView::panelProblem(const platform::Dictionary &config)
{
    const quint64 wanted = plan::columns(config, m_columns, m_slotCount);
    return PanelGeometry::whyNotDrawable(m_groupCount, m_slotCount, wanted,
                                         config::text(config::Column, config));
}

PanelPlan InteractiveView::planPanel(const platform::Dictionary &config, const platform::Array &inputs,
                                     const platform::Array &switches, const platform::Value &buttons,
                                     const platform::Value &groupIndex, const platform::Value &systemIndex)
{
    PanelPlan plan;
    plan.kind = groupIndex.isValid() ? PanelKind::Group : PanelKind::Slot;
    platform::Value group;
    if (groupIndex.isValid()) {
        group = groupNames().value(static_cast<qsizetype>(platform::integerValue(groupIndex)));
        plan.groupNumber = groupIndex.toULongLong();
        plan.panelKey = panelKey(platform::description(group));
    }
    if (systemIndex.isValid()) {
        const qint64 index = platform::integerValue(systemIndex);
        if (index >= 0 && index < m_systemIndexToGroupMapping.size()) {
            group = m_systemIndexToGroupMapping.at(static_cast<qsizetype>(index));
            plan.slot = m_systemIndexToSlotMapping.value(static_cast<qsizetype>(index));
            plan.groupNumber = static_cast<quint64>(index) / m_slotCount;
        }
        plan.systemIndex = systemIndex;
        plan.panelKey = panelKey(platform::description(systemIndex));
    }
    plan.groupName = panelKey(platform::description(group));
    plan.title = plan::title(config, plan.groupName.text(), plan.slot);
    plan.label = config::label(config);
    plan.message = config::text(config::Message, config);
    plan.messageFontSize = plan::messageFontSize(config);
    plan.messageColor = config::text(config::MessageColor, config);
    plan.messageAlignment = plan::messageAlignment(config);
    plan.columns = plan::columns(config, m_columns, m_slotCount);
    plan.inputs = inputs;
    plan.switchCount = switches.size();
    plan.buttons = plan::buttonTitles(buttons, plan.kind, !inputs.isEmpty(), !switches.isEmpty());
    return plan;
}

void InteractiveView::takePanelSettings(const platform::Dictionary &config)
{
    const QString alpha = config::text(config::BackgroundAlpha, config);
    const QString shadow = config::text(config::DrawShadow, config);
    if (!alpha.isEmpty()) {
        const auto guard = m_groupButtons.lock();
        m_backgroundAlpha = platform::decimalValue(alpha);
    }
    if (!shadow.isEmpty()) {
        const auto guard = m_groupButtons.lock();
        m_drawShadow = platform::booleanValue(shadow);
    }
}

void InteractiveView::drawPanel(PanelPlan &plan)
{
    const platform::Dictionary data = savedData();
    log::standard(messages::PanelEntered,
                  {selectors::blockName(selectors::DrawUI), plan.panelKey, plan.groupName, plan.slot,
                   m_enableStatus.lock()->value(plan.panelKey.text()), data});
    PanelDrawing drawing{plan,
                         PanelGeometry(plan.kind, m_slotCount, plan.columns, m_splitView->frame().width()),
                         nullptr,
                         nullptr,
                         {}};
    if (plan.isGroupPanel())
        resetUI(plan.panelKey);
    prepareContainer(drawing);

    const bool isInformative = plan.isGroupPanel() && !plan.message.isEmpty();
    if (isInformative)
        drawMessage(drawing);
    else if (!collection(plan.groupName.text()))
        buildOverview(drawing);
    drawSlotBoxes(drawing);
    if (plan.isGroupPanel()) {
        if (plan.hasFields())
            drawSharedInput(drawing);
        drawButtonRow(drawing);
    }
    finishPanel(drawing);
}

void InteractiveView::prepareContainer(PanelDrawing &drawing)
{
    const PanelPlan &plan = drawing.plan;
    const platform::Identifier slotContainer = identifiers::named(plan.groupName.text(), identifiers::Group);
    drawing.container = subView(m_splitView, plan.groupName);
    if (!drawing.container) {
        if (!plan.isGroupPanel())
            dropEmptyContainer(slotContainer.text());
        drawing.made = std::make_unique<platform::View>();
        drawing.made->setWantsLayer(true);
        drawing.made->setLayerBackgroundColor(platform::Color::clear());
        drawing.made->setAutoresizingMask(platform::WidthSizable);
        drawing.container = drawing.made.get();
    }
    const platform::Rect frame = drawing.geometry.container(plan.groupNumber);
    if (plan.isGroupPanel())
        drawing.container->setIdentifier(plan.panelKey);
    else
        drawing.container->setIdentifier(slotContainer);
    drawing.container->setFrame(frame);
    if (plan.isGroupPanel())
        drawGroupHeader(drawing);
    log::debug(messages::PanelPlaced, {selectors::blockName(selectors::DrawUI), plan.columns, frame.y(),
                                       drawing.geometry.rows(), describeCollections()});
}

/// The container of a slot panel is empty when the group's overview stands in another one; only the latest
/// such container is kept, so that they do not pile up.
void InteractiveView::dropEmptyContainer(const QString &identifier)
{
    for (platform::View *panel : m_splitView->subviews()) {
        if (panel->identifier().text() == identifier && panel->subviews().isEmpty())
            panel->removeFromSuperview();
    }
}

void InteractiveView::drawGroupHeader(PanelDrawing &drawing)
{
    const PanelPlan &plan = drawing.plan;
    drawing.container->addSubview(
        makeLabel(drawing.geometry.header(), platform::Font::system(HeaderFontSize), plan.groupName.text()));
    if (plan.groupNumber == 0)
        return;
    auto line = std::make_unique<platform::View>(drawing.geometry.separator());
    line->setWantsLayer(true);
    line->setLayerBackgroundColor(platform::Color::lightGray());
    line->setAutoresizingMask(platform::MinXMargin | platform::WidthSizable);
    line->setIdentifier(identifiers::named(plan.panelKey.text(), identifiers::LineView));
    drawing.container->addSubview(line.release());
}

void InteractiveView::drawMessage(PanelDrawing &drawing)
{
    PanelPlan &plan = drawing.plan;
    platform::TextField *label =
        makeLabel(drawing.geometry.message(), platform::Font::system(plan.messageFontSize), plan.message);
    label->setTextColor(ColorEngine::colorForName(plan.messageColor).value_or(platform::Color::black()));
    label->setAlignment(plan.messageAlignment);
    drawing.container->addSubview(label);
    plan.buttons.clear();
}

void InteractiveView::drawSharedInput(PanelDrawing &drawing)
{
    auto field = makeInputField(drawing.geometry.sharedInput(), drawing.plan.panelKey,
                                drawing.geometry.fieldFontSize());
    field->setBordered(true);
    field->setEditable(true);
    field->setAutoresizingMask(platform::MinYMargin);
    field->setTarget(this, selectors::CheckInput, [this](platform::View *sender) { checkInput(sender); });
    field->setIdentifier(identifiers::named(drawing.plan.panelKey.text(), identifiers::SharedInput));
    drawing.fields.append(field.get());
    drawing.container->addSubview(field.release());
}

void InteractiveView::drawButtonRow(PanelDrawing &drawing)
{
    const qsizetype count = drawing.plan.buttons.size();
    for (qsizetype i = 0; i < count; ++i) {
        auto button = makePanelButton(drawing.geometry.bottomButton(i, count), drawing.plan, i);
        button->setAutoresizingMask(platform::MinXMargin | platform::MinYMargin);
        button->setFont(platform::Font::system(ButtonFontSize));
        drawing.container->addSubview(button.release());
    }
}

void InteractiveView::finishPanel(PanelDrawing &drawing)
{
    setupResponderChain(drawing.fields);
    setResponders(drawing.plan.panelKey.text(), drawing.fields);
    // A container with nothing in it lies over the group's overview and must not keep clicks from it.
    drawing.container->setPassesClicksThrough(drawing.container->subviews().isEmpty());
    drawing.made.release(); // NOLINT(bugprone-unused-return-value): the split view owns it from here
    m_splitView->addSubview(drawing.container);
    unhideUI(drawing.plan.panelKey);
    // Only now: a container that was just made had no window before, where a field takes no focus.
    if (!drawing.plan.isGroupPanel() && !drawing.fields.isEmpty())
        drawing.fields.last()->becomeFirstResponder();
}

} // namespace interactive
