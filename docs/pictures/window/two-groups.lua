-- Scans into both groups; G2 has no unit in S3, and one serial number is scanned a second time.
local scene = dofile("docs/pictures/window/scene.lua")

local function scan(group, serials)
    operator.click(group .. "-SharedInput")
    for _, serial in ipairs(serials) do
        operator.scan(serial)
    end
end

operator.waitForPanel("G1", scene.limit)
operator.waitForPanel("G2", scene.limit)
operator.click({ panel = "G2", switch = "S3" })
operator.sleep(4.3)
scan("G1", { "SN2600411", "SN2600412", "SN2600413" })
scan("G2", { "SN2600415", "SN2600416", "SN2600415" })
scene.take()
