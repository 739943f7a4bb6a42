#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

const QStringList FourSlots{"S1", "S2", "S3", "S4"};

/// What an operator can reach with the mouse; a click on what is covered or out of reach ends the run.
class Window : public ::testing::Test
{
protected:
    StationRun station;
};

TEST_F(Window, EveryOpenPanelCanBeAnsweredWhileItIsAsSmallAsItGets)
{
    station.groups({"G1", "G2"}).slotNames(FourSlots).perSystem(R"(
        local answer = showView(systemIndex, { input = { "SN" }, button = { "Cancel", "OK" }, column = 4 })
        return answer.SN == "n" .. systemIndex
    )");
    station.operatorDoes(R"(
        for index = 0, 7 do operator.waitForPanel(tostring(index), 30) end
        local width, height = operator.resize(100, 100)
        expect(width <= 1024 and height <= 768, "it fits a small screen: " .. width .. " x " .. height)
        for index = 7, 0, -1 do
            operator.click(index .. "-SN")
            operator.scan("n" .. index)
            operator.click({ panel = tostring(index), title = "OK" })
            operator.waitForPanelGone(tostring(index), 30)
        end
    )");
    station.passes();
}

TEST_F(Window, TwelveSlotsInTwoColumnsStandWholeOnASmallScreen)
{
    QStringList names;
    for (int slot = 1; slot <= 12; ++slot)
        names.append(QStringLiteral("S%1").arg(slot));
    station.groups({"G1"}).slotNames(names).perGroup(R"(
        local slots = {}
        for slot = 1, 12 do slots[slot] = "S" .. slot end
        return showGroupView(0, { input = slots, column = 2 }) ~= nil
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.resize(1024, 768)
        local seen = {}
        local root = operator.tree()
        local function look(view, x, y)
            local name = view.class == "Button" and view.text or view.identifier
            local left, low = x + view.frame.x, y + view.frame.y
            seen[name or ""] = { left, low, left + view.frame.width, low + view.frame.height }
            for _, child in ipairs(view.children) do look(child, left, low) end
        end
        look(root, -root.frame.x, -root.frame.y)
        -- Scrollers stand at the right and below; what is cut off can still be read and pressed.
        local width, height, scroller, cut = root.frame.width, root.frame.height, 12, 6
        local function isInSight(name)
            local place = seen[name]
            expect(place, name .. " is there")
            expect(place[1] >= 0 and place[3] <= width - scroller and place[2] >= scroller - cut
                and place[4] <= height, name .. " is in sight: " .. table.concat(place, " "))
        end
        for slot = 1, 12 do isInSight("G1-S" .. slot) end
        for _, name in ipairs({ "G1-SharedInput", "Cancel", "Clear", "OK" }) do isInSight(name) end
        for slot = 1, 12 do operator.scan("n" .. slot) end
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

TEST_F(Window, PanelsOfDifferentColumnsCoverNothingOfOneAnother)
{
    station.groups({"G1", "G2", "G3"}).slotNames(FourSlots).perGroup(R"(
        local columns = { 1, 4, 2 }
        local answer = showGroupView(groupNumber, {
            input = { "S1", "S2", "S3", "S4" }, column = columns[groupNumber + 1],
        })
        return answer.S4 == groupName .. "4"
    )");
    station.operatorDoes(R"(
        for group = 1, 3 do operator.waitForPanel("G" .. group, 30) end
        for group = 1, 3 do
            local key = "G" .. group
            for slot = 1, 4 do
                operator.click({ panel = key, switch = "S" .. slot })
                operator.click({ panel = key, switch = "S" .. slot })
            end
            operator.click(key .. "-SharedInput")
            for slot = 1, 4 do operator.scan(key .. slot) end
        end
        for group = 1, 3 do operator.click({ panel = "G" .. group, title = "OK" }) end
    )");
    station.passes();
}

TEST_F(Window, TheButtonsOfManyGroupsLeaveTheLoopFieldAndThePanelsFree)
{
    QStringList groups;
    for (int group = 1; group <= 16; ++group)
        groups.append(QStringLiteral("G%1").arg(group));
    station.groups(groups).perStation(R"(return showView(0, { button = { "No", "Yes" } }))");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        for _, width in ipairs({ 100, 1000, 1400 }) do
            operator.resize(width, 700)
            for group = 2, 16 do
                operator.click("G" .. group)
                operator.click("G" .. group)
            end
            operator.click("Loop")
            operator.scan(tostring(width))
            expect(operator.tree("Loop").text == tostring(width), "the loop's field takes a number")
        end
        operator.click({ panel = "0", title = "Yes" })
    )");
    station.passes();
}

} // namespace
