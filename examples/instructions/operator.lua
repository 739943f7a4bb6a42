-- The picture of the panel that has the focus is shown as soon as it was read, which the log tells.
local function waitUntilRead(whose)
    local line = whose .. ': the picture "label.svg" was read'
    for _ = 1, 1000 do
        for _, logged in ipairs(operator.log()) do
            if logged:find(line, 1, true) then
                return
            end
        end
        operator.sleep(0.01)
    end
    error("not logged: " .. line)
end

operator.waitForPanel("0", 20)
operator.waitForPanel("1", 20)
operator.click("1-SN")
waitUntilRead("G1 S2")
operator.scan("260002")
operator.click("0-SN")
waitUntilRead("G1 S1")
operator.screenshot("build/demo/instructions.png")
operator.scan("260001")
for _, key in ipairs({ "0", "1" }) do
    operator.click({ panel = key, title = "OK" })
    operator.waitForPanelGone(key, 20)
end
