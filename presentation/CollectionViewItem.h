#pragma once

#include "platform/Box.h"
#include "platform/CollectionView.h"

namespace interactive {

/// The controller of one tile of a group's overview.
///
/// Thread: the main thread. Ownership: as platform::CollectionViewItem.
class CollectionViewItem : public platform::CollectionViewItem
{
    Q_OBJECT
public:
    /// The item identifier, which is also the name of the interface file that tiles are made from.
    inline static const QString Name = QStringLiteral("CollectionViewItem");

    using platform::CollectionViewItem::CollectionViewItem;

    /// Makes a tile from its interface file: an item, its view, and a box known to both. The caller owns the
    /// item and, until it has a parent, its view.
    [[nodiscard]] static CollectionViewItem *makeFromInterfaceFile();

    /// Logs the object that the item represents from now on.
    void setRepresentedObject(const platform::Value &object) override;

    /// The tile's box; null when it is gone. Owned by the view tree.
    [[nodiscard]] platform::Box *box() const { return m_box; }
    void setBox(platform::Box *box) { m_box = box; }
    /// A dictionary that the tile can carry.
    [[nodiscard]] platform::Dictionary objectData() const { return m_objectData; }
    void setObjectData(const platform::Dictionary &data) { m_objectData = data; }
    /// The system the tile stands for; nothing until it is set.
    [[nodiscard]] platform::Value systemIndex() const { return m_systemIndex; }
    void setSystemIndex(const platform::Value &index) { m_systemIndex = index; }

private:
    QPointer<platform::Box> m_box;
    platform::Dictionary m_objectData;
    platform::Value m_systemIndex;
};

} // namespace interactive
