operator.waitForPanel("G1", 20)
operator.waitForPanel("G2", 20)

-- A scanner sends one number after another; each lands in the next position.
operator.click("G1-SharedInput")
operator.type("100001\n100002\n100003\n100004\n")
expect(operator.tree("G1-S3").text == "100003", "the third number is in S3")

-- A number that another position has already is refused, and typed over by the right one.
operator.click("G2-SharedInput")
operator.type("200001\n200001\n")
expect(operator.tree("G2-SharedInput").text == "200001", "a duplicate stays in the shared field")
operator.type("200002\n200003\n200004\n")

-- A click on a filled position opens it again.
operator.click({ panel = "G1", slot = "S2" })
operator.scan("100022")

operator.click({ panel = "G1", title = "OK" })
operator.click({ panel = "G2", title = "OK" })
operator.waitForPanelGone("G1", 20)
operator.waitForPanelGone("G2", 20)
