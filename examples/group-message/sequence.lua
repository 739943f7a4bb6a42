-- A message on a group's panel asks nothing: the call returns an empty table at once, and the message stays up until
-- the next panel of the group.
local answer = showGroupView(groupNumber, {
    message = "Warming up, please wait",
    messageFont = 24,
    messageColor = "blue",
})
if next(answer) ~= nil then
    return false
end
-- Here the fixture would warm up. The next panel takes the message's place.
return showGroupView(groupNumber, { button = { "Stop here", "Go on" } })
