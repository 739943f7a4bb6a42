-- The refusal stands on a panel with the one button "OK".
operator.waitForPanel("G1", 20)
operator.click({ panel = "G1", title = "OK" })
operator.waitForPanelGone("G1", 20)
