operator.waitForPanel("G1", 20)
-- The message needs no answer; the question that follows does.
local limit = os.time() + 20
local function has(view, title)
    for _, child in ipairs(view.children) do
        if child.text == title or has(child, title) then
            return true
        end
    end
    return false
end
repeat
    operator.sleep(0.02)
    expect(os.time() < limit, "the question did not come")
    local panel = operator.tree("G1")
until panel and has(panel, "Go on")
operator.click({ panel = "G1", title = "Go on" })
operator.waitForPanelGone("G1", 20)
