-- Asks for the serial numbers of all positions of the group that are switched on, then shows what it was given.
local answer, problem = showGroupView(groupNumber, {
    input = { "S1", "S2", "S3", "S4" },
    length = 8,
    backgroundAlpha = 0.7,
})
if problem then
    error(problem.message)
end
if not answer then
    return false
end

local scanned = {}
for _, slot in ipairs({ "S1", "S2", "S3", "S4" }) do
    scanned[#scanned + 1] = slot .. " " .. (answer[slot] or "empty")
end
showGroupView(groupNumber, { message = groupName .. " has " .. table.concat(scanned, ", ") })
return true
