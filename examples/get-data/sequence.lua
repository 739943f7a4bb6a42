-- What was entered on a group's panel stays available to getData, position by position.
showGroupView(groupNumber, { input = { "S1", "S2", "S3" }, length = 0 })

local wanted = { [0] = "alpha", [1] = "beta", [2] = "gamma" }
for index = 0, 2 do
    local value, problem = getData(index)
    if problem then
        error(problem.message)
    end
    log("system " .. index .. " has " .. value)
    if value ~= wanted[index] then
        return false
    end
end
return true
