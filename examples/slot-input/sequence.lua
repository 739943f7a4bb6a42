-- Asks for the serial number of one position: eight characters, no more and no fewer.
local answer, problem = showView(systemIndex, {
    input = { "SN" },
    length = 8,
    button = { "Cancel", "OK" },
})
if problem then
    error(problem.message)
end
if not answer then
    log(slotName .. " was cancelled")
    return false
end
log(slotName .. " has the serial number " .. answer.SN)
return true
