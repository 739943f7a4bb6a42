operator.waitForPanel("G1", 20)

local function waitUntil(condition, what)
    for _ = 1, 400 do
        if condition() then return end
        operator.sleep(0.02)
    end
    error(what)
end

operator.scan("100011")
operator.scan("100026")
waitUntil(function()
    return operator.tree("G1-StatusLine").text:find("the line does not know it", 1, true)
end, "the reason is told in words")
-- The position that was refused takes the next scan; "OK" waits for its check.
operator.scan("100010")
operator.click({ panel = "G1", title = "OK" })
operator.waitForPanelGone("G1", 20)

operator.waitForPanel("G1", 20)
operator.scan("Ann")
operator.waitForPanelGone("G1", 20)
