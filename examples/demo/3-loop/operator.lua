-- Answers each group once. A panel in a later pass would wait in vain, and the run would not pass.
local limit = 30

operator.waitForPanel("G1", limit)
operator.waitForPanel("G2", limit)
for _, group in ipairs({ "G1", "G2" }) do
    operator.click(group .. "-SharedInput")
    for slot = 1, 4 do
        operator.scan(group .. "0" .. slot)
    end
end
operator.sleep(0.1) -- for the picture: the log's lines come along a little later
operator.screenshot("build/demo/loop.png")
operator.click({ panel = "G1", title = "OK" })
operator.click({ panel = "G2", title = "OK" })
operator.waitForPanelGone("G1", limit)
operator.waitForPanelGone("G2", limit)
