operator.waitForPanel("G1", 20)
-- A beginning that fits one choice alone stands for it, in whatever case.
operator.scan("green")
operator.scan("B")

-- The panel has ended by itself, and the next one stands there with its defaults.
local function offered()
    local field = operator.tree("G1-SharedInput")
    return field and field.text
end
for _ = 1, 2000 do
    if offered() == "A4" then break end
    operator.sleep(0.01)
end
expect(offered() == "A4", "the first default is offered")
operator.scan("4B")
expect(operator.tree("G1-StatusLine").text:find("A letter and a digit"), "the reason is told")
operator.scan("B1")
operator.click({ panel = "G1", title = "OK" })
operator.waitForPanelGone("G1", 20)
