-- What is to be looked at stands beside the panels, which open one after the other, in a window that has its size.
sleep(0.5 + 0.4 * systemIndex)
local answer = showView(systemIndex, {
    input = { "SN" },
    length = 9,
    placeholder = "Scan the label",
    button = { "Cancel", "OK" },
    backgroundAlpha = 0.7,
    image = "label.svg",
    instruction = [[
# Before the test

1. Open the lid of the fixture.
2. Put the unit in **with the label upwards**.
3. Scan the bar code *below* the name.

| lamp | means |
|---|---|
| green | ready |
| red | call the line's lead |]],
})
return answer ~= nil
