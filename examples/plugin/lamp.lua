-- For a host that has this plug-in alone.
local lit = lamp(systemIndex, { color = "green" })
local none, problem = lamp(systemIndex, { color = "mauve" })
return lit == 1 and none == nil and problem.code == 1
