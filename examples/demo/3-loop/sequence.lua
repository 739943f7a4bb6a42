-- Three passes over the same units: the first one asks, the others have the answer already.
setLoop(3)
local first, passes
passes = 0
repeat
    local answer, problem = showGroupView(groupNumber, {
        input = { "S1", "S2", "S3", "S4" },
        length = 4,
        backgroundAlpha = 0.7,
    })
    if problem then
        error(problem.message)
    end
    if not answer then
        return false
    end
    passes = passes + 1
    first = first or answer
    for _, slot in ipairs({ "S1", "S2", "S3", "S4" }) do
        if answer[slot] ~= first[slot] then
            error("pass " .. passes .. " has another unit in " .. slot)
        end
    end
    log(groupName .. ": pass " .. passes .. " of " .. getLoopConfig().LoopMax)
until isLoopFinished(groupNumber) == 1
return passes == 3
