-- Lights the lamp of the position, asks for its verdict, and shows it by the lamp.
lamp(systemIndex, { color = "orange" })
local good = showView(systemIndex, { message = "Does the unit hum?", button = { "No", "Yes" } })
local lit, problem = lamp(systemIndex, { color = good and "green" or "red" })
if problem then
    error(problem.message)
end
log(slotName .. " is one of " .. lit)
return good
