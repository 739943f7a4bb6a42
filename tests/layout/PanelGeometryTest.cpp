#include "layout/PanelGeometry.h"

#include "tests/support/Looks.h"

#include <gtest/gtest.h>

using interactive::PanelGeometry;
using interactive::PanelKind;
using testsupport::inWords;

namespace {

TEST(PanelGeometryTest, SlotsStandInAsManyRowsAsTheColumnsNeed)
{
    struct Case
    {
        quint64 slotCount;
        quint64 columns;
        quint64 rows;
        double areaHeight;
        double minimumWidth;
    };
    const Case cases[] = {
        {1, 1, 1, 126.0, 250.0},   {4, 1, 4, 456.0, 250.0},   {4, 2, 2, 236.0, 500.0},
        {4, 3, 2, 236.0, 750.0},   {4, 4, 1, 126.0, 1000.0},  {4, 7, 1, 126.0, 1750.0},
        {12, 5, 3, 346.0, 1250.0}, {12, 6, 2, 236.0, 1500.0},
    };
    for (const Case &each : cases) {
        const PanelGeometry geometry(PanelKind::Group, each.slotCount, each.columns, 100.0);
        EXPECT_EQ(geometry.rows(), each.rows) << each.slotCount << " in " << each.columns;
        EXPECT_EQ(geometry.areaHeight(), each.areaHeight) << each.slotCount << " in " << each.columns;
        EXPECT_EQ(geometry.minimumWidth(), each.minimumWidth) << each.slotCount << " in " << each.columns;
    }
}

TEST(PanelGeometryTest, APanelStandsWhereItsBandBegins)
{
    const PanelGeometry geometry(PanelKind::Group, 4, 2, 800.0);
    EXPECT_EQ(inWords(geometry.container(0.0)), "(0, 0, 800, 236)");
    EXPECT_EQ(inWords(geometry.container(472.0)), "(0, 472, 800, 236)");
}

TEST(PanelGeometryTest, APanelIsNeverSoNarrowThatItsBottomRowHasNoRoom)
{
    struct Case
    {
        qsizetype buttons;
        bool hasField;
        double width;
    };
    const Case cases[] = {
        {3, true, 691.0},  {2, false, 300.0}, {1, false, 300.0},
        {4, false, 404.0}, {0, true, 403.0},  {0, false, 300.0},
    };
    for (const Case &each : cases) {
        PanelGeometry geometry(PanelKind::Group, 4, 1, 300.0);
        geometry.makeRoomForRow(each.buttons, each.hasField);
        EXPECT_EQ(geometry.containerWidth(), each.width) << each.buttons << " buttons";
        const bool collides = geometry.sharedInput().intersects(geometry.bottomButton(0, each.buttons));
        EXPECT_FALSE(each.hasField && each.buttons > 0 && collides);
    }
}

TEST(PanelGeometryTest, APanelIsNeverNarrowerThanItsColumns)
{
    EXPECT_EQ(PanelGeometry(PanelKind::Slot, 4, 4, 999.0).containerWidth(), 1000.0);
    EXPECT_EQ(PanelGeometry(PanelKind::Slot, 4, 4, 1001.0).containerWidth(), 1001.0);
}

TEST(PanelGeometryTest, TheOverviewOfAGroupPanelStandsHigherTheMoreRowsItHas)
{
    const std::pair<quint64, QString> cases[] = {
        {4, "(0, 30, 1000, 80)"}, {2, "(0, 54, 500, 144)"}, {1, "(0, 86, 250, 272)"}};
    for (const auto &[columns, expected] : cases)
        EXPECT_EQ(inWords(PanelGeometry(PanelKind::Group, 4, columns, 1280.0).overviewScroll()), expected);
}

TEST(PanelGeometryTest, TheOverviewOfASlotPanelStandsAtTheBottom)
{
    const std::pair<quint64, QString> cases[] = {
        {4, "(0, 0, 1000, 126)"}, {2, "(0, 0, 500, 236)"}, {1, "(0, 0, 250, 456)"}};
    for (const auto &[columns, expected] : cases)
        EXPECT_EQ(inWords(PanelGeometry(PanelKind::Slot, 4, columns, 1280.0).overviewScroll()), expected);
}

TEST(PanelGeometryTest, BottomButtonsAreAlignedToTheRight)
{
    const PanelGeometry geometry(PanelKind::Group, 4, 4, 1280.0);
    EXPECT_EQ(inWords(geometry.bottomButton(0, 1)), "(1180, 4, 80, 30)");
    EXPECT_EQ(inWords(geometry.bottomButton(0, 3)), "(988, 4, 80, 30)");
    EXPECT_EQ(inWords(geometry.bottomButton(2, 3)), "(1180, 4, 80, 30)");
}

TEST(PanelGeometryTest, AStationWithoutSlotsOrColumnsThatNoWindowHoldsHasNoPanel)
{
    EXPECT_EQ(PanelGeometry::whyNotDrawable(2, 4, 4, "4"), "");
    EXPECT_EQ(PanelGeometry::whyNotDrawable(2, 4, 1, "1"), "");
    EXPECT_NE(PanelGeometry::whyNotDrawable(0, 0, 4, "4"), "");
    EXPECT_NE(PanelGeometry::whyNotDrawable(2, 4, 0, "0"), "");
    EXPECT_NE(PanelGeometry::whyNotDrawable(2, 4, 100'000'000, "100000000"), "");
    EXPECT_NE(PanelGeometry::whyNotDrawable(2, 4, static_cast<quint64>(-1), "-1"), "");
}

} // namespace
