-- The log is unfolded with its shortcut; a serial number of another make is refused.
local scene = dofile("docs/pictures/window/scene.lua")
scene.clock("08:14:02.117")
for index = 0, 7 do
    operator.waitForPanel(tostring(index), scene.limit)
end
operator.sleep(1)
operator.type("\12")
operator.sleep(2.6)
local function enter(at, index, serial)
    scene.clock(at)
    operator.enter(index .. "-SN", serial)
    operator.sleep(0.1)
end
enter("08:14:09.482", 0, "SN2600411")
scene.clock("08:14:10.935")
operator.click({ panel = "0", title = "OK" })
operator.waitForPanelGone("0", scene.limit)
operator.sleep(0.2)
enter("08:14:13.206", 1, "SM2600412")
scene.take()
