-- Scans into both groups at the same time; G2 has no unit in S3, and its switch is turned off.
local limit = 30

local function serial(group, slot)
    return string.format("SN26%d%03d", group, 100 + 7 * slot)
end

local function scan(group, slots)
    operator.click("G" .. group .. "-SharedInput")
    for _, slot in ipairs(slots) do
        operator.scan(serial(group, slot))
    end
end

local function messageOf(key)
    for _, view in ipairs(operator.tree(key).children) do
        if view.text and view.text:find(" has ", 1, true) then
            return view.text
        end
    end
end

operator.waitForPanel("G1", limit)
operator.waitForPanel("G2", limit)
operator.click({ panel = "G2", switch = "S3" })
scan(1, { 1, 2 })
scan(2, { 1 })
-- The serial number of another unit is refused and stays to be typed over.
operator.scan(serial(2, 1))
operator.sleep(0.1) -- for the picture: the log's lines come along a little later
operator.screenshot("build/demo/group.png")
operator.scan(serial(2, 2))
operator.scan(serial(2, 4))
scan(1, { 3, 4 })
operator.click({ panel = "G1", title = "OK" })
operator.click({ panel = "G2", title = "OK" })

local scanned = {
    G1 = string.format("G1 has S1 %s, S2 %s, S3 %s, S4 %s", serial(1, 1), serial(1, 2), serial(1, 3), serial(1, 4)),
    G2 = string.format("G2 has S1 %s, S2 %s, S3 empty, S4 %s", serial(2, 1), serial(2, 2), serial(2, 4)),
}
for key, right in pairs(scanned) do
    operator.waitForPanelGone(key, limit)
    operator.waitForPanel(key, limit)
    local told = messageOf(key)
    expect(told == right, key .. " was told '" .. tostring(told) .. "' instead of '" .. right .. "'")
end
