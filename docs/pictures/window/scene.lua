-- What the scenes share. The environment names the picture, its size and the file that tells the log's clock.
local scene = { limit = 60 }

operator.resize(tonumber(os.getenv("PICTURE_WIDTH")), tonumber(os.getenv("PICTURE_HEIGHT")))

-- From now on lines of the log are of this time of day: a picture that is made anew has not changed.
function scene.clock(time)
    local file = assert(io.open(os.getenv("PICTURE_CLOCK"), "w"))
    file:write("2026-03-02 ", time, "\n")
    file:close()
end

-- Takes the picture once all of it is painted, and ends the station: what is left of its run is in no picture.
function scene.take()
    operator.sleep(0.2)
    operator.screenshot(os.getenv("PICTURE"))
    operator.stop()
end

return scene
