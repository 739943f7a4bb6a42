#include "platform/CollectionView.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace platform {

CollectionView::~CollectionView() = default;

void CollectionView::setBackgroundColors(const QList<Color> &colors)
{
    m_backgroundColors = colors;
    update();
}

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
    m_selection.clear();
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

/// At least one item stands in a row, however narrow the view.
int CollectionView::itemsInRow() const
{
    if (m_layout.itemsInRow > 0)
        return m_layout.itemsInRow;
    const double pitch = m_layout.itemSize.width() + m_layout.minimumInteritemSpacing;
    const double room = bounds().width() - m_layout.sectionInset[1] - m_layout.sectionInset[3] +
                        m_layout.minimumInteritemSpacing;
    if (pitch <= 0.0 || room < pitch)
        return 1;
    return static_cast<int>(
        std::min(std::floor(room / pitch), static_cast<double>(std::max(1, itemCount()))));
}

void CollectionView::layout()
{
    const double top = m_layout.sectionInset[0];
    const double left = m_layout.sectionInset[1];
    const double pitch = m_layout.itemSize.width() + m_layout.minimumInteritemSpacing;
    const int perRow = itemsInRow();
    for (int i = 0; i < itemCount(); ++i) {
        View *view = m_items[static_cast<std::size_t>(i)]->view();
        if (!view)
            continue;
        const int row = i / perRow;
        const double x = left + pitch * (i % perRow);
        const double y = bounds().height() - top - m_layout.itemSize.height() * (row + 1);
        view->setFrame({Point(x, y), m_layout.itemSize});
    }
}

void CollectionView::paintEvent(QPaintEvent *event)
{
    if (!m_backgroundColors.isEmpty())
        QPainter(this).fillRect(rect(), m_backgroundColors.first().toQColor());
    View::paintEvent(event);
}

std::optional<int> CollectionView::itemAt(const QPoint &position) const
{
    for (int i = 0; i < itemCount(); ++i) {
        const View *view = m_items[static_cast<std::size_t>(i)]->view();
        if (view && view->isVisible() && view->geometry().contains(position))
            return i;
    }
    return std::nullopt;
}

void CollectionView::mousePressEvent(QMouseEvent *event)
{
    event->ignore();
    const std::optional<int> pressed = itemAt(event->position().toPoint());
    if (!m_selectable || event->button() != Qt::LeftButton || !pressed)
        return;
    event->accept();
    const std::set<int> wanted{*pressed};
    const std::set<int> allowed =
        m_delegate ? m_delegate->collectionViewShouldSelectItemsAtIndexPaths(this, wanted) : wanted;
    if (allowed.contains(*pressed))
        m_selection = wanted;
}

} // namespace platform
