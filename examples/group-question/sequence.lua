-- Buttons alone on a group's panel: true for the last one, false for every other one.
local isClosed = showGroupView(groupNumber, { button = { "Open", "Half", "Closed" } })
log("The door of " .. groupName .. (isClosed and " is closed" or " is not closed"))
return isClosed == (groupName == "G2")
