#pragma once

#include "platform/Value.h"
#include "platform/View.h"

#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace platform {

/// The controller of one item of a collection view: it holds the item's view and the object it represents.
///
/// Thread: the main thread. Ownership: the collection view owns its items and their views.
class CollectionViewItem : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] View *view() const { return m_view; }
    /// Sets the item's view, which an interface file made. Called once.
    void setView(View *view) { m_view = view; }
    [[nodiscard]] Value representedObject() const { return m_representedObject; }
    virtual void setRepresentedObject(const Value &object) { m_representedObject = object; }
    /// Called once, after the interface file was loaded.
    virtual void viewDidLoad() {}

private:
    QPointer<View> m_view;
    Value m_representedObject;
};

class CollectionView;

/// Answers what a collection view asks.
class CollectionViewDelegate
{
public:
    virtual ~CollectionViewDelegate() = default;
    /// Of the items (by index) that a person is about to select, those that may be.
    [[nodiscard]] virtual std::set<int>
    collectionViewShouldSelectItemsAtIndexPaths(CollectionView *view, const std::set<int> &indexes) = 0;
};

/// Lays out items by index, left to right, top to bottom, each made from the registered interface file.
///
/// Shapes and units: as many items in a row as the layout says or the width holds (at least one), rows from
/// the upper edge downwards without a gap. Positions follow when the view is resized. A press on an item
/// selects it when the view is selectable and the delegate, if there is one, allows it; otherwise the
/// selection stays. Thread: the main thread. Ownership: owns its items; the delegate must outlive the view.
class CollectionView : public View
{
    Q_OBJECT
public:
    /// How items are laid out.
    struct FlowLayout
    {
        enum class ScrollDirection { Vertical = 0, Horizontal = 1 };
        double sectionInset[4] = {0.0, 0.0, 0.0, 0.0}; ///< top, left, bottom, right
        ScrollDirection scrollDirection = ScrollDirection::Vertical;
        double minimumInteritemSpacing = 0.0;
        Size itemSize{50.0, 50.0};
        /// How many items stand in a row, whatever the width; 0 for as many as the width holds.
        int itemsInRow = 0;
    };
    /// Makes an item with its view, as an interface file describes it; the caller owns both.
    using ItemFactory = std::function<CollectionViewItem *()>;

    using View::View;
    ~CollectionView() override;

    [[nodiscard]] const FlowLayout &flowLayout() const { return m_layout; }
    void setFlowLayout(const FlowLayout &flow);
    /// Registers the interface file that items are made from, under the items' identifier.
    void registerItem(ItemFactory factory, const QString &itemIdentifier);
    [[nodiscard]] QString itemIdentifier() const { return m_itemIdentifier; }
    [[nodiscard]] const Array &content() const { return m_content; }
    /// Makes one item for each object; former items go, and nothing is selected. Requires: an item was
    /// registered.
    void setContent(const Array &content);
    [[nodiscard]] int itemCount() const { return static_cast<int>(m_items.size()); }
    /// The item, or null when there is none of that index.
    [[nodiscard]] CollectionViewItem *itemAtIndex(qint64 index) const;

    [[nodiscard]] bool isSelectable() const { return m_selectable; }
    void setSelectable(bool selectable) { m_selectable = selectable; }
    void setDelegate(CollectionViewDelegate *delegate) { m_delegate = delegate; }
    [[nodiscard]] CollectionViewDelegate *delegate() const { return m_delegate; }
    [[nodiscard]] const std::set<int> &selectionIndexes() const { return m_selection; }
    [[nodiscard]] QList<Color> backgroundColors() const { return m_backgroundColors; }
    /// The first one is painted behind the items.
    void setBackgroundColors(const QList<Color> &colors);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void layout() override;

private:
    [[nodiscard]] int itemsInRow() const;
    /// The item whose view is at a position of the widget (origin at the upper left).
    [[nodiscard]] std::optional<int> itemAt(const QPoint &position) const;

    FlowLayout m_layout;
    ItemFactory m_factory;
    QString m_itemIdentifier;
    Array m_content;
    std::vector<CollectionViewItem *> m_items;
    bool m_selectable = false;
    std::set<int> m_selection;
    CollectionViewDelegate *m_delegate = nullptr;
    QList<Color> m_backgroundColors;
};

} // namespace platform
