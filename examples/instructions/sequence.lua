-- What is to be looked at stands beside the panel: a picture that lies beside this file, and a text in Markdown.
local answer = showView(systemIndex, {
    input = { "SN" },
    button = { "Cancel", "OK" },
    image = "label.svg",
    instruction = [[
# Unit in slot ]] .. slotName .. [[

1. Open the lid.
2. Put the unit in **with the label upwards**.
3. Scan the bar code *below* the name.

| lamp | means |
|---|---|
| green | ready |
| red | call the line's lead |
]],
})
return answer ~= nil and answer.SN == "26000" .. (systemIndex + 1)
