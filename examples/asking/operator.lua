operator.waitForPanel("G1", 20)
-- A beginning that fits one choice alone stands for it, in whatever case.
operator.scan("green")
operator.scan("B")

-- The panel has ended by itself, and the next one stands there with its defaults.
while not operator.tree("G1-SharedInput") or operator.tree("G1-SharedInput").text ~= "A4" do
    operator.sleep(0.01)
end
operator.scan("4B")
expect(operator.tree("G1-StatusLine").text:find("A letter and a digit"), "the reason is told")
operator.scan("B1")
operator.click({ panel = "G1", title = "OK" })
operator.waitForPanelGone("G1", 20)
