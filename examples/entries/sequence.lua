-- Serial numbers of a known form, none of which was given before in this run.
local units, problem = showGroupView(groupNumber, {
    input = { "S1", "S2" },
    pattern = "SN[0-9]{5}",
    hint = "The code on the lid",
    unique = "run",
})
if not units then
    error(problem and problem.message or "cancelled")
end

-- What the operator reads off the meter is a number, with the comma or the point.
local volts = showGroupView(groupNumber, {
    input = { "S1", "S2" },
    label = "U",
    number = { min = 3.0, max = 3.6, decimals = 2, unit = "V" },
})
log(string.format("%s has %.2f V, %s has %.2f V", units.S1, volts.S1, units.S2, volts.S2))

-- One of a list: its beginning is enough where it fits no other.
local colors = showGroupView(groupNumber, {
    input = { "S1", "S2" },
    label = "Cable",
    choices = { "Blue", "Black", "Red" },
})
return volts.S1 == 3.3 and volts.S2 == 3.3 and colors.S1 == "Red" and colors.S2 == "Blue"
