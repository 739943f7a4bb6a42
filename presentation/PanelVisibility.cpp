#include "input/Identifiers.h"
#include "platform/Box.h"
#include "platform/MainQueue.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "presentation/CollectionViewItemView.h"
#include "presentation/ScrollView.h"

namespace interactive {

namespace {

QList<platform::View *> panelsOf(const platform::SplitView *splitView)
{
    return splitView ? splitView->subviews() : QList<platform::View *>();
}

/// The tiles of the overviews that stand in a panel.
QList<CollectionViewItemView *> tilesIn(const platform::View *panel)
{
    QList<CollectionViewItemView *> tiles;
    for (platform::View *child : panel->subviews()) {
        const auto *scrollView = qobject_cast<ScrollView *>(child);
        if (!scrollView)
            continue;
        for (platform::View *overview : scrollView->contentView()->subviews()) {
            if (!qobject_cast<platform::CollectionView *>(overview))
                continue;
            for (platform::View *view : overview->subviews()) {
                if (auto *tile = qobject_cast<CollectionViewItemView *>(view))
                    tiles.append(tile);
            }
        }
    }
    return tiles;
}

} // namespace

void InteractiveView::resetData(const platform::Identifier &identifier)
{
    if (!m_isLoopEnabled)
        m_savedData.lock()->remove(identifier.text());
    m_responders.lock()->remove(identifier.text());
}

void InteractiveView::resetUI(const platform::Identifier &identifier)
{
    const bool isGroup = isGroupView(identifier);
    for (platform::View *panel : panelsOf(m_splitView)) {
        if (panel->identifier().isSameInstance(identifier)) {
            m_collections.lock()->remove(identifier.text());
            log::standard(messages::PanelRemoved, {panel->identifier(), log::describe(panel->subviews())});
            panel->removeFromSuperview();
            return;
        }
        if (isGroup && identifiers::before(identifiers::Separator, panel->identifier()) == identifier) {
            panel->removeFromSuperview();
            // This removal is guarded by the conditions' lock, as it always was; the dictionary's own lock is
            // what keeps its structure safe.
            const auto conditions = m_conditions.lock();
            m_collections.lock()->remove(identifier.text());
            continue;
        }
        if (emptyTile(panel, identifier))
            return;
    }
}

bool InteractiveView::emptyTile(platform::View *panel, const platform::Identifier &identifier)
{
    for (CollectionViewItemView *tile : tilesIn(panel)) {
        if (!tile->box() || !tile->box()->contentView()->identifier().isSameInstance(identifier))
            continue;
        for (platform::View *child : tile->box()->contentView()->subviews())
            child->removeFromSuperview();
        return true;
    }
    return false;
}

void InteractiveView::hideUIWithIdentifier(const platform::Identifier &identifier)
{
    platform::MainQueue::sync([this, &identifier] {
        if (platform::View *panel = subView(m_splitView, identifier))
            panel->setHidden(true);
    });
}

void InteractiveView::hideUI(const platform::Identifier &identifier)
{
    for (platform::View *panel : panelsOf(m_splitView)) {
        if (panel->identifier().isSameInstance(identifier))
            panel->setHidden(true);
    }
}

void InteractiveView::unhideUI(const platform::Identifier &identifier)
{
    for (platform::View *panel : panelsOf(m_splitView)) {
        if (!(panel->identifier() == identifier))
            continue;
        panel->setHidden(false);
        const Responders fields = responders(panel->identifier().text());
        if (!fields.isEmpty())
            activateResponder(fields.last());
    }
}

} // namespace interactive
