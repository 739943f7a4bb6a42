local answer, problem = showGroupView(groupNumber, { title = "Input is no list", input = "S1" }) -- check: ignore
return answer == nil and problem == nil
