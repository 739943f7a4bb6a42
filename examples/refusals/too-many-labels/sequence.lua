local answer, problem = showGroupView(groupNumber, {
    title = "Too many labels",
    switch = { "S1", "S2", "S3", "S4", "S5" }, -- check: ignore
})
log(problem.message)
return answer == nil and problem.code == 102
