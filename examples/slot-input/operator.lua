operator.waitForPanel("0", 20)
operator.waitForPanel("1", 20)

-- The panels may be answered in any order. Seven characters are one too few: the field stays red and selected,
-- so that the next entry replaces them.
operator.click("1-SN")
operator.scan("SN00002")
expect(operator.tree("1-SN").background.green == 0, "a short entry turns the field red")
operator.scan("SN000002")
operator.click({ panel = "1", title = "OK" })

operator.click("0-SN")
operator.scan("SN000001")
operator.click({ panel = "0", title = "OK" })

operator.waitForPanelGone("0", 20)
operator.waitForPanelGone("1", 20)
