-- Asks `count` questions from number `first` on, of systems or of groups (`kind`), a kind of question after the other,
-- and returns how many were not answered as the operator of RoundTrips.cpp answers them.
local wrong = 0

local function expect(isRight)
    if not isRight then
        wrong = wrong + 1
    end
end

local function code(answer, problem)
    return answer == nil and problem and problem.code
end

local function judge(text)
    return #text == 8, "eight characters"
end

local function askSystem(system, number)
    local text = string.format("SN%06d", number % 1000)
    local which = number % 6
    if which == 0 then
        expect(showView(system, { message = "Is the lamp lit?", button = { "No", "Yes" } }) == true)
    elseif which == 1 then
        local answer = showView(system, { input = { "SN" }, length = 8, title = "Scan the unit" })
        expect(answer and answer.SN == text)
    elseif which == 2 then
        local answer = showView(system, { input = { "SN" }, pattern = "SN[0-9]+", hint = "on the label", validate = judge, autoConfirm = true })
        expect(answer and answer.SN == text)
    elseif which == 3 then
        local answer = showView(system, { input = { "V" }, number = { min = 3.0, max = 3.6, unit = "V" }, default = "3.3", timeLimit = 3600 })
        expect(answer and answer.V == 3.3)
    elseif which == 4 then
        local answer = showView(system, { input = { "Color" }, choices = { "red", "green", "blue" }, placeholder = "of the lamp", column = 2 })
        expect(answer and answer.Color == "green")
    else
        expect(code(showView(system, { input = { "A", "B" } })) == 105)
    end
end

local function askGroup(group, number)
    local text = string.format("SN%06d", number % 1000)
    local which = number % 6
    if which == 0 then
        local answer = showGroupView(group, { input = { "S1", "S2", "S3", "S4" }, length = 9, unique = "station" })
        expect(answer and answer.S1 == text .. "1" and answer.S4 == text .. "4")
    elseif which == 1 then
        local on = showGroupView(group, { switch = { "S1", "S2", "S3", "S4" } })
        expect(on and on.S1 == 1 and on.S2 == true)
    elseif which == 2 then
        expect(showGroupView(group, { button = { "No", "Yes" }, column = 2 }) == false)
    elseif which == 3 then
        local answer = showGroupView(group, { message = "Please wait" })
        expect(type(answer) == "table" and next(answer) == nil)
    elseif which == 4 then
        expect(code(showGroupView(group, { input = { "S9" } })) == 101)
    else
        local answer = showGroupView(group, { input = { "S2", "S3" }, validate = judge, autoConfirm = true, timeLimit = 3600 })
        expect(answer and answer.S2 == text and answer.S3 == "XX" .. text:sub(3))
    end
end

local ask = kind == "system" and askSystem or askGroup
for number = first, first + count - 1 do
    ask(number % places, number)
end
return wrong
