-- The call for G2 has a mistake: it names a slot twice.
local slots = groupName == "G2" and { "S1", "S2", "S2" } or { "S1", "S2", "S3", "S4" } -- check: ignore
return showGroupView(groupNumber, { input = slots, length = 9, backgroundAlpha = 0.7 }) ~= nil
