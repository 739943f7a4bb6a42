#include "platform/CollectionView.h"

#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace platform {

CollectionView::~CollectionView() = default;

void CollectionView::setFlowLayout(const FlowLayout &flow)
{
    m_layout = flow;
    layout();
}

void CollectionView::registerItem(ItemFactory factory, const QString &itemIdentifier)
{
    m_factory = std::move(factory);
    m_itemIdentifier = itemIdentifier;
}

void CollectionView::setContent(const Array &content)
{
    for (CollectionViewItem *item : m_items) {
        if (item->view())
            item->view()->removeFromSuperview();
        item->deleteLater();
    }
    m_items.clear();
    m_content = content;
    for (const Value &object : content) {
        CollectionViewItem *item = m_factory();
        item->setParent(this);
        addSubview(item->view());
        item->viewDidLoad();
        item->setRepresentedObject(object);
        m_items.push_back(item);
    }
    layout();
}

CollectionViewItem *CollectionView::itemAtIndex(qint64 index) const
{
    return index >= 0 && index < itemCount() ? m_items[static_cast<std::size_t>(index)] : nullptr;
}

void CollectionView::layout()
{
    const auto &[top, left, bottom, right] = m_layout.sectionInset;
    const double pitch = m_layout.itemSize.width() + m_layout.minimumInteritemSpacing;
    const double available = bounds().width() - left - right + m_layout.minimumInteritemSpacing;
    const int perRow = pitch > 0.0 ? std::max(1, static_cast<int>(std::floor(available / pitch))) : 1;
    for (int i = 0; i < itemCount(); ++i) {
        View *view = m_items[static_cast<std::size_t>(i)]->view();
        if (!view)
            continue;
        const double x = left + pitch * (i % perRow);
        const double y = bounds().height() - top - m_layout.itemSize.height() * (i / perRow + 1);
        view->setFrame({Point(x, y), m_layout.itemSize});
    }
}

void CollectionView::mousePressEvent(QMouseEvent *event)
{
    event->ignore();
    if (!m_selectable)
        return;
    for (int i = 0; i < itemCount(); ++i) {
        const View *view = m_items[static_cast<std::size_t>(i)]->view();
        if (!view || !view->geometry().contains(event->position().toPoint()))
            continue;
        const std::set<int> wanted{i};
        m_selection = m_delegate ? m_delegate->collectionViewShouldSelectItemsAtIndexPaths(this, wanted) : wanted;
        event->accept();
    }
}

} // namespace platform
