-- Runs once for each test position. Asks for a serial number, then for what only a person can see.
local answer, problem = showView(systemIndex, {
    input = { "SN" },
    length = 8,
    hint = "eight characters, as on the label",
    button = { "Cancel", "OK" },
})
if problem then
    error(problem.message)
end
if not answer then
    return false -- cancelled
end
log(slotName .. " holds " .. answer.SN)

return showView(systemIndex, {
    message = "Is the lamp of " .. answer.SN .. " lit?",
    button = { "No", "Yes" },
})
