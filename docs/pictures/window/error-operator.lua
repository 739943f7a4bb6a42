-- Reads the refusal, and goes on with the other group meanwhile.
local scene = dofile("docs/pictures/window/scene.lua")

operator.waitForPanel("G1", scene.limit)
operator.waitForPanel("G2", scene.limit)
operator.sleep(3.2)
operator.click("G1-SharedInput")
operator.scan("SN2600411")
operator.scan("SN2600412")
scene.take()
