local answer, problem = showGroupView(groupNumber, {
    title = "Too many columns",
    input = { "S1", "S2" },
    column = 5, -- check: ignore
})
log(problem.message)
return answer == nil and problem.code == 103
