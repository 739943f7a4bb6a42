-- Most units need nobody; some are scanned.
sleep(systemIndex % 12 < 8 and 1 or 100 * (systemIndex % 2))
if systemIndex % 5 < 2 then
    return showView(systemIndex, {
        input = { "SN" },
        length = 9,
        column = 4,
        button = { "Cancel", "OK" },
        backgroundAlpha = 0.7,
    }) ~= nil
end
return systemIndex % 17 ~= 5
