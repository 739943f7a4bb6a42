-- The panels as they open.
local scene = dofile("docs/pictures/window/scene.lua")

operator.waitForPanel("0", scene.limit)
operator.waitForPanel("1", scene.limit)
operator.sleep(3.3)
scene.take()
