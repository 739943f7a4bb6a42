#include "layout/PanelBuilder.h"

#include "layout/Overview.h"
#include "layout/PanelDrawing.h"
#include "layout/PanelParts.h"
#include "layout/SpokenNames.h"
#include "platform/MainQueue.h"
#include "presentation/ColorEngine.h"
#include "presentation/ScrollView.h"
#include "presentation/TimeBar.h"

#include "common/ConfigValues.h"
#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

namespace {

constexpr double HeaderFontSize = 16.0;
constexpr double ButtonFontSize = 16.0;

} // namespace

PanelBuilder::PanelBuilder(const House &house, SlotBoxes &boxes, Document &document, ErrorPanel &errors,
                           Entries &entries, Confirmation &confirmation)
    : m_house(house)
    , m_boxes(boxes)
    , m_document(document)
    , m_errors(errors)
    , m_entries(entries)
    , m_confirmation(confirmation)
{}

std::optional<std::chrono::steady_clock::time_point> PanelBuilder::drawUI(const PanelRequest &request)
{
    PanelPlan plan = planned(request);
    // Waited for: what went wrong in drawing belongs to the call, which must not wait on a panel that does
    // not stand.
    return platform::MainQueue::sync([this, &plan] { return draw(plan); });
}

PanelPlan PanelBuilder::planned(const PanelRequest &request)
{
    return plan::made(request, m_house.station.slotCount(), m_house.settings);
}

std::optional<std::chrono::steady_clock::time_point> PanelBuilder::draw(PanelPlan &plan)
{
    drawPanel(plan);
    return plan.timeEnds;
}

QString PanelBuilder::panelProblem(const platform::Dictionary &config) const
{
    const quint64 slotCount = m_house.station.slotCount();
    const quint64 wanted = plan::columns(config, m_house.settings.columns(), slotCount);
    return PanelGeometry::whyNotDrawable(m_house.station.groupCount(), slotCount, wanted,
                                         config::text(config::Column, config));
}

void PanelBuilder::drawPanel(PanelPlan &plan)
{
    log::standard(messages::PanelEntered,
                  {selectors::blockName(selectors::DrawUI), plan.subject.panelKey, plan.subject.groupName,
                   plan.subject.slot, m_house.slotStates.of(plan.subject.panelKey.text()),
                   m_house.records.all()});
    PanelDrawing drawing{plan,
                         PanelGeometry(plan.kind, m_house.station.slotCount(), plan.columns,
                                       m_house.views.splitView()->frame().width()),
                         nullptr,
                         nullptr,
                         {},
                         {}};
    // A message has no buttons, see drawMessage().
    if (plan.isGroupPanel())
        drawing.geometry.makeRoomForRow(plan.isInformative() ? 0 : plan.buttons.size(), plan.hasFields());
    if (plan.hasFields() && plan.rules->hasStatusLine())
        drawing.geometry.makeRoomForStatusLine();
    m_errors.clearTitle();
    // Kept by panel: entries and switches paint long after the drawing, when another call's look may be in
    // force.
    m_house.views.setLook(plan.subject.panelKey.text(), plan.look);
    // A group's panel is drawn into an empty band; a slot's panel leaves its neighbours standing.
    if (plan.isGroupPanel())
        m_house.views.resetUI(plan.subject.panelKey);
    prepareContainer(drawing);

    if (plan.isInformative())
        drawMessage(drawing);
    else if (!m_house.views.collection(plan.subject.groupName.text()))
        buildOverview(drawing);
    m_boxes.draw(drawing);
    if (plan.isGroupPanel()) {
        if (plan.hasFields()) {
            drawSharedInput(drawing);
            drawing.addStatusLine(*drawing.container);
        }
        drawButtonRow(drawing);
    }
    finishPanel(drawing);
}

void PanelBuilder::prepareContainer(PanelDrawing &drawing)
{
    const PanelPlan &plan = drawing.plan;
    const platform::Identifier slotContainer =
        identifiers::named(plan.subject.groupName.text(), identifiers::Group);
    // A message of the group that still stands there goes: the slot's panel would lie upon it.
    if (!plan.isGroupPanel() && PanelViews::subView(m_house.views.splitView(), plan.subject.groupName))
        m_house.views.resetUI(plan.subject.groupName);
    // By the group's own name, which only the container of a group's panel bears: slots share the overview by
    // way of collection(), not the container.
    drawing.container = PanelViews::subView(m_house.views.splitView(), plan.subject.groupName);
    if (!drawing.container) {
        if (!plan.isGroupPanel())
            dropEmptyContainer(slotContainer.text());
        drawing.made = std::make_unique<platform::View>();
        drawing.made->setLayerBackgroundColor(platform::Color::clear());
        drawing.made->setAutoresizingMask(platform::WidthSizable);
        drawing.container = drawing.made.get();
    }
    const platform::Rect frame = drawing.geometry.container(
        m_document.bandBegin(plan.subject.groupNumber, drawing.geometry.areaHeight()));
    if (plan.isGroupPanel())
        drawing.container->setIdentifier(plan.subject.panelKey);
    else
        drawing.container->setIdentifier(slotContainer);
    drawing.container->setFrame(frame);
    drawing.container->setAccessibleName(QStringLiteral("Group %1").arg(plan.subject.groupName.text()));
    if (plan.isGroupPanel())
        drawGroupHeader(drawing);
    log::debug(messages::PanelPlaced, {selectors::blockName(selectors::DrawUI), plan.columns, frame.y(),
                                       drawing.geometry.rows(), m_house.views.describeCollections()});
}

/// The container of a slot panel is empty when the group's overview stands in another one; only the latest
/// such container is kept, so that they do not pile up.
void PanelBuilder::dropEmptyContainer(const QString &identifier)
{
    for (platform::View *panel : m_house.views.panels()) {
        if (panel->identifier().text() == identifier && panel->subviews().isEmpty())
            panel->removeFromSuperview();
    }
}

void PanelBuilder::drawGroupHeader(PanelDrawing &drawing)
{
    const PanelPlan &plan = drawing.plan;
    const platform::Rect frame = drawing.geometry.header();
    platform::TextField *header =
        parts::add(*drawing.container, parts::label(frame, platform::Font::system(HeaderFontSize),
                                                    plan.subject.groupName.text()));
    header->setSpokenRole(QAccessible::Heading);
    parts::followWidth(*drawing.container, *header, 0.0, frame.width());
    if (plan.subject.groupNumber == 0)
        return;
    parts::add(*drawing.container,
               parts::separator(drawing.geometry.separator(),
                                identifiers::named(plan.subject.panelKey.text(), identifiers::LineView)));
}

void PanelBuilder::drawMessage(PanelDrawing &drawing)
{
    PanelPlan &plan = drawing.plan;
    auto label =
        parts::label(drawing.geometry.message(), platform::Font::system(plan.messageFontSize), plan.message);
    label->setTextColor(ColorEngine::colorForName(plan.messageColor).value_or(platform::Color::black()));
    label->setAlignment(plan.messageAlignment);
    parts::followWidth(*drawing.container, *label, 0.0, platform::LargestCoordinate);
    parts::add(*drawing.container, std::move(label));
    // No call waits behind a message, so there is nothing to end.
    plan.buttons.clear();
}

void PanelBuilder::drawSharedInput(PanelDrawing &drawing)
{
    auto field = parts::entryField(drawing.geometry.sharedInput(), drawing.plan.subject.panelKey,
                                   identifiers::SharedInput, drawing.geometry.fieldFontSize(),
                                   {m_house.controller, m_entries});
    // No call waits behind a message: what is scanned then must not seem to be taken.
    field->setEnabled(!drawing.plan.isInformative());
    const PanelPlan &plan = drawing.plan;
    parts::ask(*field, *plan.rules, spoken::control(plan.label, spoken::whose(plan.subject)),
               spoken::askedFor(*plan.rules, plan.label, plan.length));
    drawing.fields.append(field.get());
    parts::add(*drawing.container, std::move(field));
}

void PanelBuilder::drawButtonRow(PanelDrawing &drawing)
{
    const qsizetype count = drawing.plan.buttons.size();
    for (qsizetype i = 0; i < count; ++i) {
        auto button =
            parts::confirmButton(drawing.geometry.bottomButton(i, count), drawing.plan.buttons.at(i),
                                 plan::buttonIdentifier(drawing.plan, i), ButtonFontSize,
                                 {m_house.controller, [this](platform::View *sender) {
                                      m_confirmation.confirmBtnClicked(sender);
                                  }});
        button->setAutoresizingMask(platform::MinXMargin | platform::MinYMargin);
        button->setSpokenName(
            spoken::control(drawing.plan.buttons.at(i), spoken::whose(drawing.plan.subject)));
        drawing.buttons.append(parts::add(*drawing.container, std::move(button)));
    }
}

void PanelBuilder::buildOverview(PanelDrawing &drawing)
{
    const PanelPlan &plan = drawing.plan;
    const quint64 slotCount = m_house.station.slotCount();
    platform::CollectionView *overview = overview::put(
        *drawing.container, drawing.geometry, overview::content(plan.subject.groupNumber, slotCount));
    overview->setDelegate(m_house.delegate);
    // A group's panel shows and hides each box as it draws it.
    if (!m_house.views.isGroupView(plan.subject.panelKey))
        overview::hideBoxes(*overview);
    m_house.views.setCollection(plan.subject.groupName.text(), overview);
    m_document.makeRoom(drawing.geometry);
    const platform::Rect document = m_house.views.scrollView()->documentView()->frame();
    log::debug(messages::DocumentEnlarged, {selectors::blockName(selectors::DrawUI), plan.subject.panelKey,
                                            document.x(), document.y(), document.width(), document.height()});
}

void PanelBuilder::finishPanel(PanelDrawing &drawing)
{
    Focus::setupResponderChain(drawing.fields);
    if (!drawing.fields.isEmpty()) {
        // What is typed at a button is meant for the field, not for the button.
        for (platform::Button *button : std::as_const(drawing.buttons))
            button->setNextResponder(drawing.fields.last());
    }
    m_house.views.setStatusLine(drawing.plan.subject.panelKey.text(), drawing.statusLine);
    m_house.views.setResponders(drawing.plan.subject.panelKey.text(), drawing.fields);
    // A container with nothing in it lies over the group's overview and must not keep clicks from it.
    drawing.container->setPassesClicksThrough(drawing.container->subviews().isEmpty());
    drawing.made.release(); // NOLINT(bugprone-unused-return-value): the split view owns it from here
    m_house.views.splitView()->addSubview(drawing.container);
    m_document.add(drawing.container, drawing.plan.subject.groupNumber, drawing.geometry);
    drawTimeBar(drawing);
    revealPanel(drawing);
    m_house.defaults.offer(drawing.plan.subject.panelKey);
    // Only now: a container that was just made had no window before, where a field takes no focus.
    m_house.focus.unhideUI(drawing.plan.subject.panelKey);
    m_house.focus.panelOpened(drawing.plan.subject.panelKey);
    m_house.guidance.panelOpened(drawing.plan.subject.panelKey.text(), panelView(drawing),
                                 drawing.plan.guidance);
}

/// Last of all, and over everything: its time begins when the panel can be seen.
void PanelBuilder::drawTimeBar(PanelDrawing &drawing)
{
    PanelPlan &plan = drawing.plan;
    platform::View *around = plan.isGroupPanel() ? drawing.container : drawing.box;
    if (!plan.rules->timeLimit || plan.isInformative() || !around)
        return;
    const QString key = plan.subject.panelKey.text();
    auto made = std::make_unique<TimeBar>(drawing.geometry.timeBar(), *plan.rules->timeLimit,
                                          [over = m_house.timeIsOver, key] { over(key); });
    plan.timeEnds = made->end();
    TimeBar *bar = parts::add(*around, std::move(made));
    bar->setIdentifier(identifiers::named(key, identifiers::TimeBar));
    if (plan.isGroupPanel())
        parts::followWidth(*around, *bar, 0.0, platform::LargestCoordinate);
}

/// More may be open than the window holds. Whoever is typing keeps sight of what is typed.
void PanelBuilder::revealPanel(const PanelDrawing &drawing)
{
    const platform::TextField *begun = m_house.focus.begunEntry();
    platform::ScrollView::reveal(begun ? static_cast<const platform::View *>(begun) : panelView(drawing));
}

/// What the operator sees as the panel.
platform::View *PanelBuilder::panelView(const PanelDrawing &drawing)
{
    // A slot's panel is its box, which may stand in the container of an earlier panel.
    if (!drawing.plan.isGroupPanel() && !drawing.buttons.isEmpty())
        return drawing.buttons.first()->superview();
    return drawing.container;
}

} // namespace interactive
