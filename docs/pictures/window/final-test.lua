-- Asks for the unit's serial number, measures it with the one meter that the station has, and has a person look at it.
local answer = showView(systemIndex, {
    input = { "SN" },
    pattern = "SN26[0-9]{5}",
    unique = "run",
    hint = "SN26 and 5 digits",
    button = { "Cancel", "OK" },
    backgroundAlpha = 0.7,
})
if not answer then
    return false
end
log(answer.SN .. " is connected")
locked("meter", function()
    log(slotName .. " is at the meter: 3.30 V")
    -- The last unit stays there until the picture is taken.
    sleep(answer.SN == "SN2600417" and 60 or 0.05)
end)
return showView(systemIndex, {
    message = "Is the lamp green?",
    messageFont = 11,
    button = { "No", "Yes" },
    backgroundAlpha = 0.7,
})
