-- Scans eight serial numbers, the positions in no order, and says Yes only to exactly what was scanned.
local limit = 30

local function serial(system)
    return string.format("SN26%04d", 4711 + 13 * system)
end

local function messageOf(system)
    local function search(view)
        if view.text and view.text:find("^Is it ") then
            return view.text
        end
        for _, child in ipairs(view.children) do
            local text = search(child)
            if text then
                return text
            end
        end
    end
    return search(operator.tree(system))
end

for system = 0, 7 do
    operator.waitForPanel(tostring(system), limit)
end
for _, system in ipairs({ 5, 0, 7, 2 }) do
    operator.click(system .. "-SN")
    operator.scan(serial(system))
end

-- One character too few: the field turns red, its text is selected, and the next entry replaces it.
operator.click("3-SN")
operator.scan("SN26475")
operator.sleep(0.1) -- for the picture: the log's lines come along a little later
operator.screenshot("build/demo/station.png")
operator.scan(serial(3))

for _, system in ipairs({ 1, 6, 4 }) do
    operator.click(system .. "-SN")
    operator.scan(serial(system))
end
for _, system in ipairs({ 7, 3, 0, 6, 1, 5, 2, 4 }) do
    operator.click({ panel = tostring(system), title = "OK" })
end

-- The question repeats what the sequence was given.
for _, system in ipairs({ 4, 2, 7, 0, 5, 1, 6, 3 }) do
    local key = tostring(system)
    operator.waitForPanelGone(key, limit)
    operator.waitForPanel(key, limit)
    local asked, scanned = messageOf(key), "Is it " .. serial(system) .. "?"
    operator.click({ panel = key, title = asked == scanned and "Yes" or "No" })
    expect(asked == scanned, "position " .. key .. " asks '" .. tostring(asked) .. "' instead of '" .. scanned .. "'")
end
for system = 0, 7 do
    operator.waitForPanelGone(tostring(system), limit)
end
