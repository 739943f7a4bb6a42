-- Takes the operator's place, to try the station without a person.
for system, serial in pairs({ ["0"] = "SN000001", ["1"] = "SN000002" }) do
    operator.waitForPanel(system, 20)
    operator.click(system .. "-SN")
    operator.scan(serial)
    operator.click({ panel = system, title = "OK" })
    operator.waitForPanelGone(system, 20)
    operator.waitForPanel(system, 20)
    operator.click({ panel = system, title = "Yes" })
    operator.waitForPanelGone(system, 20)
end
