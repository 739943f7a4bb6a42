#include "platform/TextField.h"
#include "presentation/VerticallyCenteredTextFieldCell.h"
#include "tests/support/Looks.h"
#include "tests/support/Wait.h"

#include <QImage>
#include <QLineEdit>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

using interactive::verticalInset;
using interactive::VerticallyCenteredTextFieldCell;
using platform::Font;
using platform::Rect;

namespace {

TEST(CenteredCellTest, TheInsetCentresTheLineOnePointTallerOnEachSide)
{
    struct Case
    {
        double frameHeight;
        double lineHeight;
        int expected;
    };
    const Case cases[] = {
        {22.0, 17.3, 1},  {22.0, 18.0, 1},  {22.0, 18.1, 0},  {25.0, 14.0, 4}, {25.0, 15.0, 4},
        {20.0, 14.2, 1},  {22.0, 0.0, 10},  {23.0, 0.0, 10},  {1.0, 0.0, -1},  {18.0, 18.0, -1},
        {17.0, 18.0, -2}, {17.0, 17.4, -2}, {10.0, 18.0, -5}, {22.5, 15.0, 2}, {22.9, 18.0, 1},
        {0.0, 0.0, -1},   {0.0, 3.0, -3},
    };
    for (const Case &each : cases)
        EXPECT_EQ(verticalInset(each.frameHeight, each.lineHeight), each.expected)
            << each.lineHeight << " in " << each.frameHeight;
}

TEST(CenteredCellTest, TheLinesHeightIsReadInSinglePrecision)
{
    // Higher than 18 by less than a single can tell.
    EXPECT_EQ(verticalInset(22.0, 18.00000001), 1);
    EXPECT_EQ(verticalInset(22.0, 18.0001), 0);
}

TEST(CenteredCellTest, OnlyHeightAndVerticalPlaceChange)
{
    VerticallyCenteredTextFieldCell cell;
    cell.setFont(Font::system(12));
    const int inset = verticalInset(25.0, Font::system(12).boundingHeight());
    EXPECT_EQ(cell.adjustedFrameToVerticallyCenterText({3.0, 7.0, 146.0, 25.0}),
              Rect(3.0, 7.0 + inset, 146.0, 25.0 - 2.0 * inset));
}

TEST(CenteredCellTest, WithoutAFontTheLineHasNoHeight)
{
    const VerticallyCenteredTextFieldCell cell;
    EXPECT_EQ(cell.adjustedFrameToVerticallyCenterText({0.0, 5.0, 100.0, 22.0}), Rect(0.0, 15.0, 100.0, 2.0));
    EXPECT_EQ(cell.adjustedFrameToVerticallyCenterText({0.0, 0.0, 100.0, 23.0}), Rect(0.0, 10.0, 100.0, 3.0));
}

TEST(CenteredCellTest, ALineTallerThanTheFrameMakesItLarger)
{
    VerticallyCenteredTextFieldCell cell;
    cell.setFont(Font::system(40));
    const double line = std::ceil(Font::system(40).boundingHeight());
    const Rect adjusted = cell.adjustedFrameToVerticallyCenterText({0.0, 0.0, 100.0, line - 1.0});
    EXPECT_EQ(adjusted, Rect(0.0, -2.0, 100.0, line + 3.0));
}

TEST(CenteredCellTest, TextIsDrawnEditedAndSelectedInTheAdjustedFrame)
{
    VerticallyCenteredTextFieldCell cell;
    cell.setFont(Font::system(12));
    const Rect frame(0.0, 0.0, 146.0, 40.0);
    const Rect adjusted = cell.adjustedFrameToVerticallyCenterText(frame);
    ASSERT_NE(adjusted, frame);
    EXPECT_EQ(cell.drawingFrame(frame), adjusted);
    EXPECT_EQ(cell.editingFrame(frame), adjusted);
    EXPECT_EQ(cell.selectionFrame(frame), adjusted);
    EXPECT_EQ(cell.verticalPlacement(), platform::TextFieldCell::VerticalPlacement::Centered);
}

TEST(CenteredCellTest, TheEditorOfAFieldStandsInTheAdjustedFrame)
{
    platform::View root(Rect(0.0, 0.0, 300.0, 100.0));
    auto *field = new platform::TextField(Rect(10.0, 10.0, 164.0, 40.0));
    root.addSubview(field);
    field->setCell(std::make_unique<VerticallyCenteredTextFieldCell>());
    field->setFont(Font::system(12));
    field->setEditable(true);
    root.show();
    root.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return root.isActiveWindow(); }));
    ASSERT_TRUE(field->becomeFirstResponder());
    ASSERT_NE(field->currentEditor(), nullptr);
    const int inset = verticalInset(40.0, Font::system(12).boundingHeight());
    ASSERT_GT(inset, 2);
    EXPECT_EQ(field->currentEditor()->geometry().top(), inset);
    EXPECT_EQ(field->currentEditor()->geometry().height(), 40 - 2 * inset);
}

/// A label of 146 by 40 points with the text and the kind of cell, as it is painted on white.
template <class Cell>
QImage pictureOf(const QString &text)
{
    platform::TextField field(Rect(0.0, 0.0, 146.0, 40.0));
    field.setCell(std::make_unique<Cell>());
    field.setFont(Font::system(12));
    field.setBordered(true);
    field.setStringValue(text);
    QImage image(146, 40, QImage::Format_ARGB32);
    image.fill(Qt::white);
    field.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// The upper and lower row of a picture in which there is something inside the border.
std::pair<int, int> inkedRows(const QImage &image)
{
    std::pair<int, int> rows{image.height(), -1};
    for (int y = 3; y < image.height() - 3; ++y) {
        for (int x = 3; x < image.width() - 3; ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::white))
                continue;
            rows = {std::min(rows.first, y), y};
        }
    }
    return rows;
}

TEST(CenteredCellTest, BorderAndBackgroundUseTheFullFrame)
{
    EXPECT_EQ(pictureOf<VerticallyCenteredTextFieldCell>({}), pictureOf<platform::TextFieldCell>({}));
}

TEST(CenteredCellTest, TheTextOfALabelIsPaintedInTheAdjustedFrame)
{
    const int inset = verticalInset(40.0, Font::system(12).boundingHeight());
    const auto [top, bottom] = inkedRows(pictureOf<VerticallyCenteredTextFieldCell>("SN"));
    EXPECT_GE(top, inset);
    EXPECT_LT(bottom, 40 - inset);
    EXPECT_LT(inkedRows(pictureOf<platform::TextFieldCell>("SN")).first, inset);
}

} // namespace
