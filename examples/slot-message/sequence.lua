-- A message on a position's own panel waits for its "OK" (a message on a group's panel does not: see group-message).
local done = showView(systemIndex, {
    message = "Put the unit in and close the lid.",
    messageFont = 13,
    messageColor = "navy",
    messageAlignment = 0,
})
return done == true
