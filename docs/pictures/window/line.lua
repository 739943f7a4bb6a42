-- The middle of a shift: one unit has passed, one has failed, one is looked at, one is measured and one waits for the
-- meter; a serial number that another unit has is refused.
local scene = dofile("docs/pictures/window/scene.lua")

for index = 0, 7 do
    operator.waitForPanel(tostring(index), scene.limit)
end
local function judge(index, serial, title)
    local key = tostring(index)
    operator.enter(key .. "-SN", serial)
    operator.click({ panel = key, title = "OK" })
    operator.waitForPanelGone(key, scene.limit)
    if title then
        operator.waitForPanel(key, scene.limit)
        operator.click({ panel = key, title = title })
        operator.waitForPanelGone(key, scene.limit)
    end
end
operator.sleep(3)
judge(0, "SN2600411", "Yes")
judge(1, "SN2600412", "No")
operator.sleep(2)
judge(2, "SN2600413")
operator.waitForPanel("2", scene.limit)
operator.sleep(1)
judge(4, "SN2600417")
operator.sleep(1)
judge(3, "SN2600414")
operator.sleep(3.2)
operator.enter("5-SN", "SN2600413")
scene.take()
