for index = 0, 2 do
    local key = tostring(index)
    operator.waitForPanel(key, 20)
    operator.click({ panel = key, title = "Yes" })
    operator.waitForPanelGone(key, 20)
end
