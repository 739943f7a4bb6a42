operator.waitForPanel("0", 20)
operator.click({ panel = "0", title = "OK" })
operator.waitForPanelGone("0", 20)
