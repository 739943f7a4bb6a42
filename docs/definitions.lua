---@meta
-- What a sequence and an operator's script find, for editors that speak with a Lua language server: add this file to the
-- server's libraries. sequences.md tells the rest.

---The system's number, in a sequence that runs per system.
---@type integer
systemIndex = nil
---The slot's name, in a sequence that runs per system.
---@type string
slotName = nil
---The group's number, in a sequence that runs per system or per group.
---@type integer
groupNumber = nil
---The group's name, in a sequence that runs per system or per group.
---@type string
groupName = nil
---The badge of who works at the station; nil when that is not known.
---@type string?
operatorBadge = nil

---Why a function has no result. Test for its presence, not for its code.
---@class Problem
---@field domain string
---@field code integer
---@field message string
---@field answer? table What was entered before the time limit was over (406).

---A measured value: its limits, how many decimals it may have, and its unit.
---@class NumberRule
---@field min? number
---@field max? number
---@field decimals? integer
---@field unit? string

---What a panel shows and asks for.
---@class PanelConfig
---@field input? string[] A field for each label: names of slots on a group's panel, one label on a system's.
---@field switch? string[] A switch for each slot; not beside `input`.
---@field button? string[] The titles of the buttons.
---@field length? integer Required length of an entry; 0 takes any.
---@field message? string
---@field label? string What stands before the field: "SN" unless given.
---@field title? string Heads the message when the call is refused.
---@field column? integer Columns of a group's boxes; stays in force for later panels.
---@field backgroundAlpha? number 0 to 1; stays in force for later panels.
---@field drawShadow? boolean|string|integer Stays in force for later panels.
---@field messageFont? integer Points; 15 unless given.
---@field messageColor? string
---@field messageAlignment? 0|1|2|3|4 Left, right, centred, justified, natural.
---@field pattern? string|table<string, string> A regular expression that the whole entry matches, or one for a slot or label.
---@field number? NumberRule The entry is a measured value, and the answer a number.
---@field choices? string[] The entry is one of these.
---@field unique? "group"|"station"|"run" Where an equal entry is refused.
---@field validate? fun(text: string|number, slot: string): boolean?, string? Looks at each entry on the sequence's own thread.
---@field hint? string What the operator reads when an entry is refused, besides the reason.
---@field default? string|number|table<string, string|number> What the fields are filled in with.
---@field placeholder? string Stands grey in the empty field.
---@field autoConfirm? boolean The panel ends by itself when all is entered.
---@field timeLimit? number Seconds until the call ends with error 406.
---@field image? string A file beside the sequence, shown in the instruction pane.
---@field instruction? string Markdown, shown in the instruction pane.

---Asks on a system's panel. The answer is a table of entries; true or false where buttons alone are asked; nil after "Cancel".
---@param systemIndex integer
---@param config PanelConfig
---@return table|boolean|nil answer
---@return Problem? problem
function showView(systemIndex, config) end

---Asks on a group's panel. With `message` it shows that and does not wait.
---@param groupNumber integer
---@param config PanelConfig
---@return table|boolean|nil answer
---@return Problem? problem
function showGroupView(groupNumber, config) end

---What was entered for a system on its group's panel.
---@param systemIndex integer
---@return string|number|nil entry
---@return Problem? problem
function getData(systemIndex) end

---Begins loop mode for the whole station, with so many passes.
---@param passes integer
---@return any
---@return Problem? problem
function setLoop(passes) end

---The number of passes and how many each group has done.
---@return table<string, integer> config
---@return Problem? problem
function getLoopConfig() end

---Counts a pass of a group; 1 when it was the last one, else 0.
---@param groupNumber integer
---@return integer finished
---@return Problem? problem
function isLoopFinished(groupNumber) end

---Writes a line into the station's log.
---@param text any
function log(text) end

---Waits; ends at once when the station stops.
---@param seconds number
function sleep(seconds) end

---Waits until all sequences of the group that still run have come to the same name.
---@param name string
---@param seconds? number Waits for ever without.
---@return true? met
---@return string? missing Who is not there when the time is over.
function rendezvous(name, seconds) end

---Calls the function, one sequence at a time under the same name; returns what it returns and raises what it raises.
---@generic T
---@param name string
---@param body fun(...): T
---@param ... any
---@return T
function locked(name, body, ...) end

---Values that all sequences of a run see; each is copied when it is written and when it is read.
---@class Shared
---@field [string|integer] string|number|boolean|table|nil
shared = {}

---Stores what the function makes of a key's value, and returns it.
---@param key string|integer
---@param change fun(value: any): any
---@return any
function shared.update(key, change) end

---What a click is aimed at on a panel: one of `title`, `slot` and `switch`.
---@class OperatorTarget
---@field panel string The group's name, or the system's number.
---@field title? string A button's title.
---@field slot? string The slot's field.
---@field switch? string The slot's switch.

---A view, as `operator.tree` gives it.
---@class OperatorView
---@field class string
---@field identifier? string
---@field frame table<string, number> x, y, width and height in points, from the lower left corner of the parent.
---@field tag integer
---@field hidden boolean
---@field children OperatorView[]
---@field enabled? boolean
---@field text? string
---@field editable? boolean
---@field focused? boolean
---@field fontSize? number
---@field bold? boolean
---@field alignment? integer
---@field textColor? table<string, number>
---@field background? table<string, number> red, green, blue and alpha, 0 to 1.
---@field state? integer 1 on, 0 off.

---What a script finds that takes the operator's place; operator-scripts.md tells the rest.
operator = {}

---Waits until the panel can be seen.
---@param key string The group's name, or the system's number.
---@param seconds number
function operator.waitForPanel(key, seconds) end

---Waits until the panel that was last clicked in, otherwise the one that is there, is gone.
---@param key string
---@param seconds number
function operator.waitForPanelGone(key, seconds) end

---Presses the keys of a text, for whatever has the focus.
---@param text string|number
function operator.type(text) end

---What a bar code scanner sends: the text and Return.
---@param text string|number
function operator.scan(text) end

---Clicks a field, types the text in the place of what it holds, and Return; Return alone without a text.
---@param field string|OperatorTarget
---@param text? string|number
function operator.enter(field, text) end

---Clicks a field and types the text in the place of what it holds, without Return.
---@param field string|OperatorTarget
---@param text string|number
function operator.fill(field, text) end

---Clicks a field and puts the text in the place of what it holds in one piece, as from the clipboard, without Return.
---@param field string|OperatorTarget
---@param text string|number
function operator.paste(field, text) end

---Presses and releases the mouse on a view.
---@param target string|OperatorTarget
function operator.click(target) end

---Waits until the view has the text.
---@param identifier string
---@param text string
---@param seconds number
function operator.waitForText(identifier, text, seconds) end

---Scans a badge that the station was started with (--badge), in the place of the one that is logged in.
---@param number integer 1 is the first one
function operator.logIn(number) end

---Presses Run.
function operator.run() end

---Presses Stop.
function operator.stop() end

---Waits until no sequence runs.
---@param seconds number
function operator.waitForRunEnd(seconds) end

---The views of the plug-in, or of the first view with the identifier.
---@param identifier? string
---@return OperatorView|nil view
function operator.tree(identifier) end

---A property of the plug-in.
---@param name string
---@return any
function operator.property(name) end

---The last lines of the log.
---@param count? integer 100 unless given.
---@return string[] lines
function operator.log(count) end

---Writes a PNG of the window, or of the part that a view takes up.
---@param path string
---@param identifier? string
function operator.screenshot(path, identifier) end

---Resizes the window.
---@param width integer
---@param height integer
---@return integer width What it then has, which is more when its content needs more.
---@return integer height
function operator.resize(width, height) end

---Waits; ends at once when the station stops.
---@param seconds number
function operator.sleep(seconds) end

---Fails with the text unless the condition holds.
---@param condition any
---@param text? string
function expect(condition, text) end
