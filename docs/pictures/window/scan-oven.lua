-- Asks for the serial numbers of all positions of the oven that are switched on.
local slots = {}
for number = 1, 12 do
    slots[number] = "S" .. number
end
local column = tonumber(os.getenv("PICTURE_WIDTH")) > 1024 and 4 or 2
return showGroupView(groupNumber, { input = slots, length = 9, column = column, backgroundAlpha = 0.7 }) ~= nil
