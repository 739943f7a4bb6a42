-- Asks for the serial numbers of all positions of the oven that are switched on.
local slots = {}
for number = 1, 12 do
    slots[number] = "S" .. number
end
return showGroupView(groupNumber, { input = slots, length = 9, column = 4, backgroundAlpha = 0.7 }) ~= nil
