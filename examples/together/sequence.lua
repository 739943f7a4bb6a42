-- The first position to come here sets the limits for all: whoever is next finds them.
shared.update("limits", function(limits)
    return limits or { low = 4.5, high = 5.5 }
end)

-- Nobody begins before all are connected; one whose sequence has ended is not waited for.
local all, missing = rendezvous("connected", 60)
if not all then
    error("not connected: " .. missing)
end

-- There is one meter: the positions measure one after the other, in the order in which they come.
local volts = locked("meter", function(channel)
    log(slotName .. " is at the meter")
    return 5.0 + channel / 10
end, systemIndex)

if volts >= shared.limits.low and volts <= shared.limits.high then
    shared.update("good", function(count)
        return (count or 0) + 1
    end)
end

-- When all have measured, each finds the same sum.
rendezvous("measured")
return showView(systemIndex, {
    message = string.format("%d of 3 are good. Take out %s?", shared.good, slotName),
    button = { "No", "Yes" },
})
