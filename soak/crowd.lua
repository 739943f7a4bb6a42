-- Asks for one value under the label of this sequence alone, and gives back what was entered, or the error's code.
local answer, problem = showView(system, { input = { label } })
if problem then
    return problem.code
end
return answer and answer[label]
