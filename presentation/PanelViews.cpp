#include "presentation/PanelViews.h"

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/MainQueue.h"
#include "presentation/CollectionViewItemView.h"
#include "presentation/ScrollView.h"
#include "presentation/SlotColors.h"

#include <QAccessible>

#include <algorithm>

#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

using platform::Identifier;
using platform::View;

namespace {

/// The first direct subview of a kind that is what is meant; null when there is none. Goes through the
/// widgets as they are held: this is asked for each panel whenever one comes or goes.
template <class Kind, class IsMeant>
auto firstIn(const View &view, const IsMeant &isMeant) -> decltype(isMeant(std::declval<Kind &>()))
{
    for (QObject *child : view.children()) {
        auto *each = qobject_cast<Kind *>(child);
        if (!each)
            continue;
        if (auto found = isMeant(*each))
            return found;
    }
    return {};
}

/// The first tile of the overviews in a panel that is what is meant, or null.
template <class IsMeant>
CollectionViewItemView *firstTile(const View &panel, const IsMeant &isMeant)
{
    // An overview stands in a scroll view that never scrolls, see overview::put().
    return firstIn<ScrollView>(panel, [&](const ScrollView &scrollView) {
        return firstIn<platform::CollectionView>(
            *scrollView.contentView(), [&](const platform::CollectionView &overview) {
                return firstIn<CollectionViewItemView>(overview, [&](CollectionViewItemView &tile) {
                    return tile.box() && isMeant(tile) ? &tile : nullptr;
                });
            });
    });
}

/// The box of the tile in a panel whose content bears this very identifier instance, or null.
platform::Box *boxIn(const View &panel, const Identifier &identifier)
{
    const CollectionViewItemView *tile = firstTile(panel, [&identifier](CollectionViewItemView &each) {
        return each.box()->contentView()->identifier().isSameInstance(identifier);
    });
    return tile ? tile->box() : nullptr;
}

} // namespace

void PanelViews::setViews(View *root, platform::ScrollView *scrollView, platform::SplitView *splitView)
{
    m_rootView = root;
    m_scrollView = scrollView;
    m_splitView = splitView;
    m_responders.lock()->clear();
}

QList<View *> PanelViews::panels() const
{
    return m_splitView ? m_splitView->subviews() : QList<View *>();
}

platform::TextField *PanelViews::focusedField() const
{
    const QWidget *focused = m_rootView ? m_rootView->window()->focusWidget() : nullptr;
    // The line editor inside has the focus, and the field is around it.
    return focused ? qobject_cast<platform::TextField *>(focused->parentWidget()) : nullptr;
}

Responders PanelViews::responders(const QString &key)
{
    // A copy, since calls on other threads set and drop lists while this one is gone through.
    return m_responders.lock()->value(key);
}

platform::TextField *PanelViews::entryField(const QString &key)
{
    const Responders fields = responders(key);
    platform::TextField *field = fields.isEmpty() ? nullptr : fields.last().data();
    // One without a superview has left the window, and is about to be deleted.
    return field && field->isEditable() && field->superview() ? field : nullptr;
}

bool PanelViews::hasResponders(const QString &key)
{
    return m_responders.lock()->contains(key);
}

void PanelViews::setResponders(const QString &key, const Responders &fields)
{
    m_responders.lock()->insert(key, fields);
}

void PanelViews::dropResponders(const QString &key)
{
    m_responders.lock()->remove(key);
}

platform::Dictionary PanelViews::describeResponders()
{
    platform::Dictionary description;
    // Under the lock all the way: a call on another thread may drop a list, and the last one frees it.
    const auto all = m_responders.lock();
    for (auto entry = all->cbegin(); entry != all->cend(); ++entry) {
        platform::Array fields;
        for (const QPointer<platform::TextField> &field : entry.value())
            fields.append(log::describe(field));
        description.insert(entry.key(), fields);
    }
    return description;
}

PanelLook PanelViews::lookOf(const QString &key, const PanelLook &fallback) const
{
    return m_looks.value(key, fallback);
}

void PanelViews::setLook(const QString &key, const PanelLook &look)
{
    m_looks.insert(key, look);
}

void PanelViews::setStatusLine(const QString &key, platform::TextField *line)
{
    m_statusLines.insert(key, line);
}

void PanelViews::tell(const QString &key, const QString &text, Tone tone)
{
    platform::TextField *field = entryField(key);
    if (field)
        field->tellAlso(text);
    platform::TextField *line = m_statusLines.value(key);
    if (line) {
        const bool isRefusal = tone == Tone::Refusal;
        // What is being checked is no refusal, whichever colour the system has: it has a ground of its own.
        line->setDrawsBackground(!isRefusal && !text.isEmpty());
        line->setBackgroundColor(SlotColors::checkingColor());
        line->setTextColor(isRefusal ? SlotColors::refusalTextColor() : SlotColors::noteTextColor());
        line->setStringValue(text);
    }
    if (text.isEmpty() || tone == Tone::Note)
        return;
    // Who cannot see the line hears of it at once, and again when coming back to the field.
    if (QWidget *said = line ? line : field ? field->focusTarget() : nullptr) {
        QAccessibleEvent alert(said, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    if (line && !line->showsWholeText())
        KVKExtensionStatusRelay::sharedStatusRelay()->showMessage(text);
}

QString PanelViews::told(const QString &key) const
{
    const platform::TextField *line = m_statusLines.value(key);
    return line ? line->stringValue() : QString();
}

platform::CollectionView *PanelViews::collection(const QString &groupName) const
{
    return m_collections.value(groupName);
}

void PanelViews::setCollection(const QString &groupName, platform::CollectionView *overview)
{
    m_collections.insert(groupName, overview);
}

platform::Dictionary PanelViews::describeCollections() const
{
    platform::Dictionary description;
    for (auto entry = m_collections.cbegin(); entry != m_collections.cend(); ++entry)
        description.insert(entry.key(), log::describe(entry.value()));
    return description;
}

bool PanelViews::isGroupView(const Identifier &identifier) const
{
    // A null identifier reads as the empty text, which could be the name of a group.
    return !identifier.isNull() && m_station.groupNumber(identifier.text()).has_value();
}

Identifier PanelViews::getParentIdentifier(const View *view)
{
    if (!view)
        return {};
    const View *parent = view->superview();
    if (parent && !parent->identifier().isNull())
        return parent->identifier();
    log::error(messages::NoParentView, {selectors::bracketed(selectors::GetParentIdentifier),
                                        log::describe(view), view->identifier()});
    return {};
}

View *PanelViews::subView(const View *parent, const Identifier &identifier)
{
    if (!parent)
        return nullptr;
    for (View *view : parent->subviews()) {
        // By instance: a text that was put together elsewhere may read alike and name something else.
        if (view->identifier().isSameInstance(identifier))
            return view;
    }
    return nullptr;
}

bool PanelViews::isTileContainer(const View *panel)
{
    return !firstIn<View>(*panel,
                          [](View &child) { return qobject_cast<ScrollView *>(&child) ? nullptr : &child; });
}

bool PanelViews::isInUse(const View *panel)
{
    if (!panel || !panel->superview())
        return false;
    return !isTileContainer(panel) || shownBox(*panel);
}

platform::Box *PanelViews::shownBox(const View &panel)
{
    const CollectionViewItemView *tile =
        firstTile(panel, [](CollectionViewItemView &each) { return !each.box()->isHidden(); });
    return tile ? tile->box() : nullptr;
}

void PanelViews::resetUI(const Identifier &identifier)
{
    const bool isGroup = isGroupView(identifier);
    platform::Box *known = knownBox(identifier);
    for (View *panel : panels()) {
        if (panel->identifier().isSameInstance(identifier)) {
            // The overview goes with its panel. It is deleted only later, and until then a new panel would
            // take it for the one to draw into.
            m_collections.remove(identifier.text());
            log::standard(messages::PanelRemoved, {panel->identifier(), log::describe(panel->subviews())});
            panel->removeFromSuperview();
            return;
        }
        // By text: the slots' container gets a name made afresh ("G1-group") whenever it is drawn for.
        if (isGroup && identifiers::before(identifiers::Separator, panel->identifier()) == identifier) {
            panel->removeFromSuperview();
            m_collections.remove(identifier.text());
            continue;
        }
        platform::Box *box =
            known ? (panel->isAncestorOf(known) ? known : nullptr) : boxIn(*panel, identifier);
        if (box) {
            empty(*box);
            return;
        }
    }
}

void PanelViews::setBox(const QString &panelKey, platform::Box *box)
{
    m_boxes.insert(panelKey, box);
}

/// The box that was drawn last for a panel, as long as it stands and is that panel's.
platform::Box *PanelViews::knownBox(const Identifier &identifier) const
{
    platform::Box *box = m_boxes.value(identifier.text());
    const bool isIts = box && box->contentView()->identifier().isSameInstance(identifier);
    return isIts && m_splitView && m_splitView->isAncestorOf(box) ? box : nullptr;
}

/// A tile that nothing is asked on any more would stand there as a coloured box without a meaning.
void PanelViews::empty(platform::Box &box)
{
    // First: what stands in it is hidden with it, all at once.
    box.setHidden(true);
    for (View *child : box.contentView()->subviews())
        child->removeFromSuperview();
}

void PanelViews::hideFirst(const Identifier &identifier)
{
    // Waited for, so that the call goes on with the panel hidden; asked for by its own thread, before it
    // draws.
    platform::MainQueue::sync([this, &identifier] {
        if (View *panel = subView(m_splitView, identifier))
            panel->setHidden(true);
    });
}

void PanelViews::hideUI(const Identifier &identifier)
{
    for (View *panel : panels()) {
        if (panel->identifier().isSameInstance(identifier))
            panel->setHidden(true);
    }
}

bool PanelViews::show(const Identifier &identifier)
{
    bool shown = false;
    for (View *panel : panels()) {
        if (!(panel->identifier() == identifier))
            continue;
        panel->setHidden(false);
        shown = true;
    }
    return shown;
}

void resetData(PanelRecords &records, PanelViews &views, const Identifier &identifier)
{
    // In loop mode what was entered counts again in the next pass.
    if (!records.isLoopEnabled())
        records.forget(identifier.text());
    views.dropResponders(identifier.text());
}

} // namespace interactive
