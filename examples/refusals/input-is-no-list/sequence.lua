local answer, problem = showGroupView(groupNumber, { title = "Input is no list", input = "S1" })
return answer == nil and problem == nil
