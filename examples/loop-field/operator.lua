operator.waitForPanel("G1", 20)
operator.type("0001\n0002\n")

-- A click selects what is in the field, so that the number typed replaces it.
operator.click("Loop")
operator.scan("2")
expect(operator.property("isLoopEnabled"), "two passes and more are a loop")

operator.click({ panel = "G1", title = "OK" })
operator.waitForPanelGone("G1", 20)
