-- Half of the oven is filled.
local scene = dofile("docs/pictures/window/scene.lua")

operator.waitForPanel("G1", scene.limit)
operator.click({ panel = "G1", switch = "S10" })
operator.sleep(5.3)
for number = 1, 7 do
    operator.scan("SN26" .. 11400 + number)
end
scene.take()
