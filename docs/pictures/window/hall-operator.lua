-- Waits until all that need nobody are done.
local scene = dofile("docs/pictures/window/scene.lua")

for index = 0, 95 do
    if index % 5 < 2 and (index % 12 < 8 or index % 2 == 0) then
        operator.waitForPanel(tostring(index), scene.limit)
    end
end
operator.sleep(4.0)
operator.fill("0-SN", "SN2600411")
operator.click("0-SN")
scene.take()
