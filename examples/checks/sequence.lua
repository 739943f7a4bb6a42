-- What the line knows of its units; a database or a line controller in real life.
local known = { ["100010"] = true, ["100026"] = true, ["100034"] = true }

-- Called for each entry in turn, while the panel is open and further scans go on.
local function check(text, slot)
    if not known[text] then
        return false, "the line does not know it"
    end
    return true
end

local units, problem = showGroupView(groupNumber, {
    input = { "S1", "S2" },
    length = 6,
    validate = check,
})
if not units then
    error(problem and problem.message or "cancelled")
end

-- Nobody answers this one in time: the call returns nothing, and the error keeps what was entered.
local operators, late = showGroupView(groupNumber, {
    input = { "S1", "S2" },
    label = "Operator",
    timeLimit = 1.5,
})
log("after the time: " .. late.message)
return operators == nil and late.code == 406 and late.answer.S1 == "Ann" and late.answer.S2 == nil
