-- A panel of buttons alone: the last one answers true, every other one false.
local isLit = showView(systemIndex, {
    message = "Is the green lamp of " .. slotName .. " lit?",
    messageFont = 12,
    button = { "No", "Yes" },
})
log(slotName .. (isLit and " is lit" or " is dark"))
-- Position S1 is expected to be lit, S2 to be dark.
return isLit == (slotName == "S1")
