local value, problem = getData(systemIndex)
log(problem.message)
return value == nil and problem.code == 201
