-- The operator types the number of passes into the field "Loop:" while this panel is up.
showGroupView(groupNumber, { input = { "S1", "S2" }, length = 4 })

local passes = 1
while isLoopFinished(groupNumber) == 0 do
    showGroupView(groupNumber, { input = { "S1", "S2" }, length = 4 })
    passes = passes + 1
end
log(passes .. " passes")
return passes == 2
