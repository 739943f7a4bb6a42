-- Asks for the serial numbers of all positions of the group that are switched on.
return showGroupView(groupNumber, { input = { "S1", "S2", "S3", "S4" }, length = 9, backgroundAlpha = 0.7 }) ~= nil
