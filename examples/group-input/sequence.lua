-- One panel for all positions of the group: what is scanned into the shared field goes to the next position that
-- waits, in the station's order, whatever order the list has.
local answer, problem = showGroupView(groupNumber, {
    input = { "S4", "S3", "S2", "S1" },
    length = 6,
    column = 2,
})
if problem then
    error(problem.message)
end
if not answer then
    return false
end
for _, slot in ipairs({ "S1", "S2", "S3", "S4" }) do
    log(groupName .. " " .. slot .. ": " .. tostring(answer[slot]))
end
return true
