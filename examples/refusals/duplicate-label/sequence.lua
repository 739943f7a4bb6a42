local answer, problem = showGroupView(groupNumber, { title = "Slot named twice", input = { "S1", "S2", "S1" } }) -- check: ignore
log(problem.message)
return answer == nil and problem.code == 104
