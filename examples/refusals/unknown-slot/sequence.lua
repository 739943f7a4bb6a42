local answer, problem = showGroupView(groupNumber, { title = "Unknown slot", input = { "S1", "S9" } }) -- check: ignore
log(problem.message)
return answer == nil and problem.code == 101
