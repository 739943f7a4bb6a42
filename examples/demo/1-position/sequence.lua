-- Asks for the serial number of one position, then whether that is what was scanned.
local answer, problem = showView(systemIndex, {
    input = { "SN" },
    length = 8,
    button = { "Cancel", "OK" },
    backgroundAlpha = 0.7,
})
if problem then
    error(problem.message)
end
if not answer then
    return false
end

return showView(systemIndex, {
    message = "Is it " .. answer.SN .. "?",
    messageFont = 14,
    button = { "No", "Yes" },
})
