local answer, problem = showGroupView(groupNumber, { title = "Switch is no list", switch = "S1" }) -- check: ignore
return answer == nil and problem == nil
