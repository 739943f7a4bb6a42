operator.waitForPanel("0", 30)
operator.click({ panel = "0", title = "Yes" })
operator.waitForPanelGone("0", 30)
