-- Even empty lists count: leave one of the two keys out.
local answer, problem = showGroupView(groupNumber, {
    title = "Entries and switches",
    input = { "S1", "S2" },
    switch = { "S1", "S2" }, -- check: ignore
})
log(problem.message)
return answer == nil and problem.code == 100
