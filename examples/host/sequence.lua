-- Asks for the serial number of the host's only position.
local answer, problem = showView(systemIndex, { input = { "SN" }, length = 8, autoConfirm = true })
if problem then
    error(problem.message)
end
return answer ~= nil
