#include "tests/support/FieldKeys.h"
#include "tests/support/PanelFixture.h"

#include <QStringList>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

QStringList slotNames(int count)
{
    QStringList names;
    for (int i = 1; i <= count; ++i)
        names.append(QString("S%1").arg(i));
    return names;
}

struct Place
{
    QSize window;
    int slotCount;
    int columns;
};

/// Whether the line that tells why an entry is refused can be read, wherever its panel stands.
class StatusLineTest : public testsupport::PanelFixture, public ::testing::WithParamInterface<Place>
{
protected:
    StatusLineTest()
    {
        station.windowSize = GetParam().window;
        station.slotNames = slotNames(GetParam().slotCount);
        expectError("Invalid input");
    }
    Dictionary config(const Array &input) const
    {
        return {{"input", input}, {"column", GetParam().columns}, {"pattern", "[0-9]+"}, {"length", 4}};
    }
    /// In the coordinates of the window.
    QRect area(const QWidget *view) { return {view->mapTo(&window(), QPoint()), view->size()}; }
    void expectReadable(const QString &key, const QString &expected)
    {
        const platform::TextField *line = field(key + "-StatusLine");
        ASSERT_NE(line, nullptr);
        EXPECT_EQ(line->stringValue(), expected);
        // A text that does not fit has a tool tip.
        EXPECT_EQ(line->toolTip(), "");
        // As high as its lines: no letter is cut off.
        for (const platform::View *view : testsupport::descendants(rooms().views.splitView())) {
            const bool isControl = qobject_cast<const platform::Button *>(view) ||
                                   qobject_cast<const interactive::MouseTrackedTextField *>(view);
            if (isControl && view->isVisible()) {
                EXPECT_FALSE(area(view).intersects(area(line))) << view->identifier().text().toStdString();
            }
        }
    }
};

TEST_P(StatusLineTest, OnASlotsPanelTheUsualReasonsAreWholeAndCoverNothing)
{
    showView(0, config({"SN"}));
    ASSERT_TRUE(waitForPanel("0"));
    scan("SN26");
    expectReadable("0", "\"SN26\" is refused: it does not have the form that is asked for");
    scan("SN2600012");
    expectReadable("0", "\"SN2600012\" is refused: it has 9 characters instead of 4");
}

TEST_P(StatusLineTest, OnAGroupsPanelTheUsualReasonsAreWholeAndCoverNothing)
{
    const QStringList names = slotNames(GetParam().slotCount);
    showGroup(0, config(Array(names.cbegin(), names.cend())));
    ASSERT_TRUE(waitForPanel("G1"));
    scan("SN26");
    expectReadable("G1", "\"SN26\" is refused: it does not have the form that is asked for");
}

INSTANTIATE_TEST_SUITE_P(Places, StatusLineTest,
                         ::testing::Values(Place{{600, 400}, 1, 1}, Place{{600, 400}, 2, 1},
                                           Place{{600, 400}, 2, 2}, Place{{600, 400}, 12, 4},
                                           Place{{1280, 800}, 12, 3}, Place{{1600, 1000}, 12, 1},
                                           Place{{1600, 1000}, 12, 2}, Place{{1600, 1000}, 12, 4}));

} // namespace
