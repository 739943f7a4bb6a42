-- One of a list: clicked, walked to with the arrow keys, typed or scanned. The panel ends with the last entry.
local colour, problem = showGroupView(groupNumber, {
    input = { "S1", "S2" },
    label = "Colour",
    choices = { "Red", "Green", "Blue" },
    placeholder = "Choose, type or scan",
    autoConfirm = true,
})
if problem then
    error(problem.message)
end

-- What is known already is filled in: Return confirms it for one slot, "OK" for all, and a scan takes its place.
local revision
revision, problem = showGroupView(groupNumber, {
    input = { "S1", "S2" },
    label = "Rev",
    default = { S1 = "A4", S2 = "A5" },
    pattern = "[A-Z][0-9]",
    hint = "A letter and a digit",
})
if problem then
    error(problem.message)
end
log("S2 is " .. colour.S2 .. " and has the revision " .. revision.S2)
return true
