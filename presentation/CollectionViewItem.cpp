#include "presentation/CollectionViewItem.h"

#include "presentation/CollectionViewItemView.h"

#include "common/Log.h"
#include "common/Messages.h"
#include "ui_CollectionViewItem.h"

namespace interactive {

CollectionViewItem *CollectionViewItem::makeFromInterfaceFile()
{
    auto view = std::make_unique<CollectionViewItemView>();
    // Only the names of the views that it makes: they belong to the tile's view, and it may go with this
    // function.
    Ui::CollectionViewItem interface;
    interface.setupUi(view.get());
    view->setBox(interface.box);

    auto item = std::make_unique<CollectionViewItem>();
    item->setBox(interface.box);
    item->setView(view.release());
    return item.release();
}

void CollectionViewItem::setRepresentedObject(const platform::Value &object)
{
    platform::CollectionViewItem::setRepresentedObject(object);
    log::debug(messages::RepresentedObject, {representedObject()});
}

} // namespace interactive
