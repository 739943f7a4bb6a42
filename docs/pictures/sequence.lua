for _, panel in ipairs(require("panels")) do
    _ENV[panel.call](0, panel.config)
    -- A message on a group panel does not wait for anybody; the operator's entry in the loop field says that its
    -- picture has been taken.
    if not panel.close then
        while getLoopConfig().LoopMax ~= 1 do
            sleep(0.01)
        end
    end
end
