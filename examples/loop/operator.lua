operator.waitForPanel("G1", 20)
operator.type("0001\n0002\n")
operator.click({ panel = "G1", title = "OK" })
operator.waitForPanelGone("G1", 20)
