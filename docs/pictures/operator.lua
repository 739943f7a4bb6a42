-- Takes a picture of each panel and answers it. Run from the project's folder.
local panels = dofile("docs/pictures/panels.lua")
operator.resize(800, 620)
for _, panel in ipairs(panels) do
    local key = panel.call == "showView" and "0" or "G1"
    operator.waitForPanel(key, 30)
    if panel.act then
        panel.act()
    end
    if panel.whole then
        operator.screenshot("docs/pictures/" .. panel.name .. ".png")
    else
        operator.screenshot("docs/pictures/" .. panel.name .. ".png", key)
    end
    if panel.after then
        panel.after()
    end
    if panel.close then
        operator.click({ panel = key, title = panel.close })
        operator.waitForPanelGone(key, 30)
    else
        operator.click("Loop")
        operator.scan("1")
    end
end
