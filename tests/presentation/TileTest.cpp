#include "presentation/CollectionViewItem.h"
#include "presentation/CollectionViewItemView.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/Printing.h"
#include "tests/support/Wait.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

using interactive::CollectionViewItem;
using interactive::CollectionViewItemView;
using platform::Color;
using platform::Dictionary;
using platform::Rect;
using platform::Value;

namespace {

QImage pictureOf(QWidget &view)
{
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    view.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// Counts how often it is painted.
class CountingTileView : public CollectionViewItemView
{
public:
    using CollectionViewItemView::CollectionViewItemView;

    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        CollectionViewItemView::paintEvent(event);
    }
};

TEST(TileTest, ATileIsMadeWithAViewAndABoxKnownToBoth)
{
    const std::unique_ptr<CollectionViewItem> item(CollectionViewItem::makeFromInterfaceFile());
    const std::unique_ptr<platform::View> view(item->view());
    auto *tileView = qobject_cast<CollectionViewItemView *>(view.get());
    ASSERT_NE(tileView, nullptr);
    ASSERT_NE(item->box(), nullptr);
    EXPECT_EQ(tileView->box(), item->box());
    EXPECT_EQ(item->box()->superview(), tileView);
    EXPECT_FALSE(tileView->isHighlighted());
}

TEST(TileTest, ATileStandsForNoSystemAndCarriesNothingUntilItIsTold)
{
    CollectionViewItem item;
    EXPECT_EQ(item.systemIndex(), Value());
    EXPECT_TRUE(item.objectData().isEmpty());
    EXPECT_EQ(item.box(), nullptr);
    item.setSystemIndex(5);
    item.setObjectData({{"a", 1}});
    EXPECT_EQ(item.systemIndex(), Value(5));
    EXPECT_EQ(item.objectData(), (Dictionary{{"a", 1}}));
}

TEST(TileTest, ATileDoesNotOwnItsBox)
{
    CollectionViewItem item;
    CollectionViewItemView view;
    {
        platform::Box box;
        item.setBox(&box);
        view.setBox(&box);
        EXPECT_EQ(item.box(), &box);
    }
    EXPECT_EQ(item.box(), nullptr);
    EXPECT_EQ(view.box(), nullptr);
}

TEST(TileTest, WhatATileRepresentsIsLoggedEveryTime)
{
    const testsupport::LogRecorder log;
    CollectionViewItem item;
    const Dictionary object{{"index", 3}};
    item.setRepresentedObject(object);
    EXPECT_EQ(log.count(KVKLogLevel::Debug, "representedObject {index = 3}"), 1);
    item.setRepresentedObject(object);
    EXPECT_EQ(log.count(KVKLogLevel::Debug, "representedObject {index = 3}"), 2);
    EXPECT_EQ(item.representedObject(), Value(object));
    item.setRepresentedObject(Value());
    EXPECT_EQ(log.count(KVKLogLevel::Debug, "representedObject (null)"), 1);
    EXPECT_EQ(item.representedObject(), Value());
}

TEST(TileTest, ATileThatIsNotHighlightedLooksLikeAnyView)
{
    CollectionViewItemView tile(Rect(0.0, 0.0, 100.0, 80.0));
    platform::View plain(Rect(0.0, 0.0, 100.0, 80.0));
    for (platform::View *each : {static_cast<platform::View *>(&tile), &plain})
        each->setLayerBackgroundColor(Color::systemBlue());
    EXPECT_EQ(pictureOf(tile), pictureOf(plain));
}

TEST(TileTest, AHighlightedTileHasAFrameOfTwentyPointsInsideItsEdges)
{
    CollectionViewItemView tile(Rect(0.0, 0.0, 100.0, 80.0));
    tile.setLayerBackgroundColor(Color::systemYellow());
    const QImage before = pictureOf(tile);
    tile.setHighlighted(true);
    const QImage after = pictureOf(tile);

    QImage expected = before;
    QPainter painter(&expected);
    for (const QRect &edge :
         {QRect(0, 0, 100, 20), QRect(0, 60, 100, 20), QRect(0, 20, 20, 40), QRect(80, 20, 20, 40)})
        painter.fillRect(edge, Color::label().toQColor());
    painter.end();
    EXPECT_EQ(after, expected);
    EXPECT_NE(after, before);
}

TEST(TileTest, HighlightingAsksForNoRedrawByItself)
{
    platform::View root(Rect(0.0, 0.0, 300.0, 100.0));
    auto *tile = new CountingTileView(Rect(0.0, 0.0, 100.0, 80.0));
    auto *neighbour = new CountingTileView(Rect(200.0, 0.0, 100.0, 80.0));
    root.addSubview(tile);
    root.addSubview(neighbour);
    root.show();
    ASSERT_TRUE(testsupport::waitUntil([&] { return tile->paints > 0 && neighbour->paints > 0; }));
    const int before = tile->paints;
    const int neighbours = neighbour->paints;
    tile->setHighlighted(true);
    neighbour->update();
    ASSERT_TRUE(testsupport::waitUntil([&] { return neighbour->paints > neighbours; }));
    EXPECT_EQ(tile->paints, before);
    tile->update();
    EXPECT_TRUE(testsupport::waitUntil([&] { return tile->paints > before; }));
}

} // namespace
