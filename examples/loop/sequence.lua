-- The operator is asked in the first pass only; in the others the answer is there already.
setLoop(3)
local passes = 0
repeat
    local answer = showGroupView(groupNumber, { input = { "S1", "S2" }, length = 4 })
    if not answer then
        return false
    end
    passes = passes + 1
    log("pass " .. passes .. " of " .. getLoopConfig().LoopMax .. ": " .. answer.S1 .. ", " .. answer.S2)
until isLoopFinished(groupNumber) == 1

-- The last pass forgets the answers, and setLoop(0) leaves the station as it was.
local _, gone = getData(0)
setLoop(0)
return passes == 3 and gone.code == 201
