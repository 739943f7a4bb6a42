-- Ask one after the other instead, or ask the whole group with showGroupView.
local answer, problem = showView(systemIndex, { title = "Two entries", input = { "SN", "MAC" } }) -- check: ignore
log(problem.message)
return answer == nil and problem.code == 105
