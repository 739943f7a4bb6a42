for system = 0, 1 do
    operator.waitForPanel(tostring(system), 30)
    operator.click({ panel = tostring(system), title = "Yes" })
    operator.waitForPanelGone(tostring(system), 30)
end
