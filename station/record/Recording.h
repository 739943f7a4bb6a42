#pragma once

#include "station/record/Recorder.h"
#include "station/results/AppendedFile.h"

#include <memory>
#include <optional>

namespace station {

class StationWindow;

/// The file of --record: what is done at the window, written through line by line.
///
/// Thread: the main thread. Requires: made before a plug-in is loaded (see Recorder).
class Recording
{
public:
    /// Records nothing where the path is empty. Errors: throws StationError when the file cannot be written,
    /// or holds something already.
    explicit Recording(const QString &path);

    /// Begins the script. The panels are looked for below the root, which lies in the window.
    void start(const QString &station, StationWindow &window, platform::View *root);
    void runBegins(const QString &badge);
    void runStops();
    void runEnds();
    /// Whether a line was lost, which was reported on the standard error output. No further one is written:
    /// a script with a gap would do something else.
    /// Sees nothing more. Called before the window goes: what is left of its views then is no view.
    void end() { m_recorder.reset(); }
    [[nodiscard]] bool hasFailed() const { return m_failed; }

private:
    void write(const QString &line);

    std::optional<AppendedFile> m_file;
    std::unique_ptr<Recorder> m_recorder;
    bool m_failed = false;
};

} // namespace station
