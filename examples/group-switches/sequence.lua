-- Which positions take part? The answer holds 1 for each position that is switched on; a position that was switched
-- off is not in it.
local states, problem = showGroupView(groupNumber, {
    switch = { "S1", "S2", "S3", "S4" },
    column = 2,
})
if problem then
    error(problem.message)
end
if not states then
    return false
end
for _, slot in ipairs({ "S1", "S2", "S3", "S4" }) do
    log(slot .. (states[slot] and " is tested" or " is left out"))
end
return states.S1 ~= nil and states.S2 == nil and states.S3 ~= nil and states.S4 ~= nil
