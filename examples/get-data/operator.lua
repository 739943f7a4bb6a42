operator.waitForPanel("G1", 20)
operator.type("alpha\nbeta\ngamma\n")
operator.click({ panel = "G1", title = "OK" })
operator.waitForPanelGone("G1", 20)
