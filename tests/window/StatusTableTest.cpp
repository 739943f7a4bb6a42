#include "station/window/StatusTable.h"

#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "station/window/StatusDelegate.h"

#include <QImage>

#include <gtest/gtest.h>

using platform::Color;
using platform::Value;
using station::StatusDelegate;
using station::StatusModel;
using station::StatusTable;
using station::SystemState;

namespace {

const Color blue{0.2, 0.4, 0.8, 1.0};
const Color yellow{1.0, 1.0, 0.0, 1.0};

/// Two groups of two slots; system 1 has colours of its own.
class StatusTableTest : public ::testing::Test
{
protected:
    StatusTableTest()
    {
        KVKConfigEngine::sharedConfigEngine()->setStatusTableCustomRowColorEnabled(true);
        KVKColorEngine::setProviders([](const Value &index) { return onlyOne(index, blue); },
                                     [](const Value &index) { return onlyOne(index, yellow); });
        table.resize(400, 300);
        table.show();
    }
    ~StatusTableTest() override { KVKColorEngine::setProviders({}, {}); }

    static std::optional<Color> onlyOne(const Value &index, const Color &color)
    {
        return index.toInt() == 1 ? std::optional(color) : std::nullopt;
    }
    [[nodiscard]] QVariant cell(int row, int column, int role = Qt::DisplayRole) const
    {
        return table.model()->index(row, column).data(role);
    }
    [[nodiscard]] QRect rectOf(int row, int column) const
    {
        return table.visualRect(table.model()->index(row, column));
    }
    [[nodiscard]] QImage picture() { return table.viewport()->grab().toImage(); }

    StatusTable table{{{0, "G1", "S1"}, {1, "G1", "S2"}, {2, "G2", "S1"}, {3, "G2", "S2"}}};
};

} // namespace

TEST_F(StatusTableTest, NamesEverySystemByNumberGroupAndSlot)
{
    ASSERT_EQ(table.model()->rowCount(), 4);
    EXPECT_EQ(cell(2, StatusModel::IndexColumn), "2");
    EXPECT_EQ(cell(2, StatusModel::GroupColumn), "G2");
    EXPECT_EQ(cell(2, StatusModel::SlotColumn), "S1");
    EXPECT_EQ(cell(2, StatusModel::StateColumn), "Idle");
}

TEST_F(StatusTableTest, ShowsTheStateOrTheTextThatComesWithIt)
{
    table.statusModel()->setState(1, SystemState::Running, {});
    table.statusModel()->setState(2, SystemState::Failed, "wrong unit");
    EXPECT_EQ(cell(1, StatusModel::StateColumn), "Running");
    EXPECT_EQ(cell(2, StatusModel::StateColumn), "wrong unit");
    EXPECT_EQ(cell(3, StatusModel::StateColumn), "Idle");
}

TEST_F(StatusTableTest, ANewStateReplacesTheTextOfTheFormerOne)
{
    table.statusModel()->setState(2, SystemState::Failed, "wrong unit");
    table.statusModel()->setState(2, SystemState::Running, {});
    EXPECT_EQ(cell(2, StatusModel::StateColumn), "Running");
}

TEST_F(StatusTableTest, PaintsARowInItsSystemsColours)
{
    EXPECT_EQ(cell(1, StatusModel::GroupColumn, Qt::BackgroundRole).value<QBrush>().color(), blue.toQColor());
    EXPECT_EQ(cell(1, StatusModel::GroupColumn, Qt::ForegroundRole).value<QBrush>().color(),
              yellow.toQColor());
    EXPECT_EQ(picture().pixelColor(rectOf(1, StatusModel::GroupColumn).topLeft() + QPoint(2, 2)),
              blue.toQColor());
}

TEST_F(StatusTableTest, PaintsARowWithoutColoursWhite)
{
    EXPECT_EQ(picture().pixelColor(rectOf(0, StatusModel::GroupColumn).topLeft() + QPoint(2, 2)),
              QColor(Qt::white));
}

TEST_F(StatusTableTest, PaintsEveryRowWhiteWhereTheStationHasNoRowColours)
{
    KVKConfigEngine::sharedConfigEngine()->setStatusTableCustomRowColorEnabled(false);
    EXPECT_FALSE(cell(1, StatusModel::GroupColumn, Qt::BackgroundRole).isValid());
    EXPECT_EQ(picture().pixelColor(rectOf(1, StatusModel::GroupColumn).topLeft() + QPoint(2, 2)),
              QColor(Qt::white));
}

TEST_F(StatusTableTest, PaintsTheStateAsABadgeOfItsColour)
{
    table.statusModel()->setState(0, SystemState::Passed, {});
    const QPoint rightOfText = rectOf(0, StatusModel::StateColumn).center() + QPoint(30, 0);
    EXPECT_EQ(picture().pixelColor(rightOfText), StatusDelegate::badgeColor(SystemState::Passed));
}

TEST_F(StatusTableTest, FramesAHighlightedRowAndNoOther)
{
    table.statusModel()->setHighlighted(1, true);
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(rectOf(1, StatusModel::IndexColumn).topLeft()),
              StatusDelegate::highlightColor());
    EXPECT_EQ(image.pixelColor(rectOf(1, StatusModel::SlotColumn).bottomLeft()),
              StatusDelegate::highlightColor());
    EXPECT_NE(image.pixelColor(rectOf(2, StatusModel::IndexColumn).topLeft()),
              StatusDelegate::highlightColor());
}

TEST_F(StatusTableTest, LosesTheFrameWithTheHighlight)
{
    table.statusModel()->setHighlighted(1, true);
    table.statusModel()->setHighlighted(1, false);
    EXPECT_EQ(picture().pixelColor(rectOf(1, StatusModel::IndexColumn).topLeft()), blue.toQColor());
}

TEST_F(StatusTableTest, IgnoresASystemThatItDoesNotHave)
{
    table.statusModel()->setHighlighted(17, true);
    table.statusModel()->setHighlighted(Q_UINT64_C(0xffffffffffffffff), true);
    table.statusModel()->setState(-1, SystemState::Failed, {});
    for (int row = 0; row < 4; ++row) {
        EXPECT_FALSE(cell(row, 0, StatusModel::HighlightRole).toBool());
        EXPECT_EQ(cell(row, StatusModel::StateColumn), "Idle");
    }
}

TEST_F(StatusTableTest, FindsRowsByIndexAlsoWhenTheyAreNotInOrder)
{
    StatusModel model({{5, "G", "A"}, {3, "G", "B"}});
    model.setState(3, SystemState::Passed, {});
    EXPECT_EQ(model.index(0, StatusModel::StateColumn).data(), "Idle");
    EXPECT_EQ(model.index(1, StatusModel::StateColumn).data(), "Passed");
}
