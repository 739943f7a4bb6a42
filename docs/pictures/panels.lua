-- The panels that the documents show. Each is opened by `call` with `config`; `act` is what the operator does before
-- the picture is taken, `close` the button that ends the call.
local slots = { "S1", "S2" }

local function switchSecond()
    operator.click({ panel = "G1", switch = "S2" })
end

-- The picture stands in the window as soon as it was read, which the log tells.
local function waitUntilRead()
    while true do
        for _, line in ipairs(operator.log()) do
            if line:find('the picture "label.svg" was read', 1, true) then
                return
            end
        end
        operator.sleep(0.01)
    end
end

return {
    -- Pictures of the whole window come before the first refusal, which its log tells.
    -- The list lies over the window, so all of it is shown.
    { name = "choices", call = "showView", close = "Cancel", whole = true,
      config = { input = { "Colour" }, choices = { "Red", "Dark red", "Green", "Blue" },
                 button = { "Cancel", "OK" } },
      act = function()
          operator.type("re")
          operator.sleep(0.5)
      end,
      -- Escape folds the list, which lies over the buttons.
      after = function()
          operator.type("\27")
          operator.sleep(0.5)
      end },
    { name = "image", call = "showView", close = "Cancel", whole = true,
      config = { input = { "SN" }, image = "label.svg", button = { "Cancel", "OK" } }, act = waitUntilRead },
    { name = "instruction", call = "showView", close = "Cancel", whole = true,
      config = { input = { "SN" }, button = { "Cancel", "OK" }, instruction = [[
# Before the test

1. Put the unit in **with the label upwards**.
2. Scan the *bar code* below its name.

| lamp | means |
|---|---|
| green | ready |
| red | call the line's lead |]] } },
    { name = "message-group", call = "showGroupView", config = { message = "Please wait until the oven is warm" } },
    -- The message stays up until the next panel of its group, which has the same key.
    { name = "button-group", call = "showGroupView", close = "Off", config = { button = { "Red", "Green", "Off" } },
      act = function()
          while not operator.tree("G1-0-Red") do
              operator.sleep(0.01)
          end
      end },
    { name = "input-slot", call = "showView", close = "Cancel",
      config = { input = { "SN" }, button = { "Cancel", "OK" } } },
    { name = "input-group", call = "showGroupView", close = "Cancel", config = { input = slots },
      act = function() operator.scan("SN26001") end },
    { name = "duplicate", call = "showGroupView", close = "Cancel", config = { input = slots },
      act = function() operator.type("SN26001\nSN26001\n") end },
    -- A slot that is switched off stays off on later panels, so it is switched on again.
    { name = "switch", call = "showGroupView", close = "Cancel", config = { switch = slots },
      act = switchSecond, after = switchSecond },
    { name = "button-slot", call = "showView", close = "Yes", config = { button = { "No", "Yes" } } },
    { name = "length", call = "showView", close = "Cancel",
      config = { input = { "SN" }, length = 8, button = { "Cancel", "OK" } },
      act = function() operator.scan("SN2600") end },
    { name = "pattern", call = "showView", close = "Cancel",
      config = { input = { "SN" }, pattern = "SN[0-9]{5}", button = { "Cancel", "OK" } },
      act = function() operator.scan("SM26001") end },
    { name = "hint", call = "showView", close = "Cancel",
      config = { input = { "SN" }, length = 8, hint = "The long code on the lid", button = { "Cancel", "OK" } },
      act = function() operator.scan("SN2600") end },
    { name = "number", call = "showView", close = "Cancel",
      config = { input = { "U" }, number = { min = 3.0, max = 3.6, decimals = 2, unit = "V" }, button = { "Cancel", "OK" } },
      act = function() operator.scan("3.75") end },
    { name = "validate", call = "showView", close = "Cancel",
      config = { input = { "SN" }, validate = function() return false, "not known" end,
                 button = { "Cancel", "OK" } },
      act = function()
          operator.scan("SN26001")
          while not operator.tree("0-StatusLine").text:find("not known", 1, true) do
              operator.sleep(0.01)
          end
      end },
    { name = "timeLimit", call = "showGroupView", close = "Cancel",
      config = { input = slots, timeLimit = 5 },
      act = function() operator.scan("SN26001") operator.sleep(1.5) end },
    { name = "unique", call = "showGroupView", close = "Cancel", config = { input = slots, unique = "run" },
      act = function() operator.type("SN26001\nSN26001\n") end },
    { name = "label", call = "showView", close = "Cancel",
      config = { input = { "IMEI" }, label = "IMEI", button = { "Cancel", "OK" } } },
    { name = "column", call = "showGroupView", close = "Cancel", config = { input = slots, column = 1 } },
    { name = "message-slot", call = "showView", close = "Done",
      config = { message = "Close the lid of the fixture", button = { "Done" }, column = 2 } },
    { name = "messageFont", call = "showView", close = "Yes",
      config = { message = "Is the green lamp of the door lit?", messageFont = 11, button = { "No", "Yes" } } },
    { name = "messageColor", call = "showView", close = "OK",
      config = { message = "High voltage!", messageColor = "red", button = { "OK" } } },
    { name = "messageAlignment", call = "showView", close = "OK",
      config = { message = "Left", messageAlignment = 0, button = { "OK" } } },
    { name = "backgroundAlpha", call = "showView", close = "OK", config = { backgroundAlpha = 0.9, button = { "OK" } } },
    { name = "drawShadow", call = "showView", close = "OK",
      config = { backgroundAlpha = 0.3, drawShadow = true, button = { "OK" } } },
    { name = "placeholder", call = "showView", close = "Cancel",
      config = { input = { "SN" }, placeholder = "Scan the label", button = { "Cancel", "OK" } } },
    { name = "default", call = "showGroupView", close = "Cancel",
      config = { input = slots, label = "Rev", default = { S1 = "A4", S2 = "A5" } },
      act = function() operator.scan("B1") end },
    { name = "autoConfirm", call = "showGroupView", close = "Cancel", config = { input = slots, autoConfirm = true },
      act = function() operator.scan("SN26001") end },
    { name = "title", call = "showGroupView", close = "OK",
      config = { title = "Second scan", input = { "S9" }, column = 2 } },
}
