-- Asks each time the gate opens: for one value of a system, for one of each slot of a group (of twelve at most), or
-- which of a group's slots are to be used.
local function names(count)
    local list = {}
    for slot = 1, count do
        list[slot] = "S" .. slot
    end
    return list
end

local ask, whom, config = showView, system, { input = { "SN" } }
if kind == "group" then
    ask, whom, config = showGroupView, 0, { input = names(math.min(slots, 12)) }
elseif kind == "switch" then
    ask, whom, config = showGroupView, 0, { switch = names(slots) }
end
config.column = math.min(slots, 6)
while pass() do
    ask(whom, config)
    -- What is left of a call is not to wait for some later one.
    collectgarbage()
end
