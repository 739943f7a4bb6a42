#pragma once

struct lua_State;

namespace station {

class OperatorActions;

/// Gives a script its table `operator`:
///
///     waitForPanel(key, seconds)      until a panel with the key can be seen
///     waitForPanelGone(key, seconds)  until the showing that was last clicked in (or else is there) is gone
///     type(text)                      keys to whatever has the focus; "\n" is Return
///     scan(text)                      type(text .. "\n")
///     click(target)                   "identifier", {panel=key, title=text}, {panel=key, slot=name} (the
///     slot's
///                                     field, or its switch where it has no field), {panel=key, switch=name}
///     enter(field [, text])           the text, in the place of what the field holds, and Return; Return
///     alone
///                                     without a text
///     fill(field, text)               the same without Return
///     paste(field, text)              the same in one piece, as from the clipboard
///     logIn(number)                   scans the badge that the station was started with under this number
///     waitForText(identifier, text, seconds)  until a view has the text
///     run(), stop()                   presses Run, presses Stop
///     waitForRunEnd(seconds)          until no sequence runs
///     tree([identifier])              the view tree, nil when there is no such view (fields: see ViewTree.h)
///     property(name)                  a property of the plug-in's context
///     log([count])                    the last lines of the log, 100 when no count is given
///     screenshot(path)                a PNG of the window
///     resize(width, height)           of the window; returns the size that it took
///     sleep(seconds)
///
/// and the function `expect(condition, text)`, which raises an error with the text unless the condition
/// holds. To answer a panel and wait for the next one of the same key, call waitForPanelGone before
/// waitForPanel: the answered one stays up for a moment.
///
/// Thread: the script's. Errors: what cannot be done is an error of the script, "file:line: text".
/// Requires: the actions outlive the state and stand in its extra space (see OperatorLua.h).
void registerOperatorFunctions(lua_State *state);

} // namespace station
