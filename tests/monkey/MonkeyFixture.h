#pragma once

#include "tests/monkey/Step.h"
#include "tests/monkey/World.h"
#include "tests/support/PluginFixture.h"

#include <functional>
#include <memory>

namespace monkey {

/// A station for calls and operators at random. At the end the calls that still wait are interrupted.
///
/// Thread: the main thread.
class MonkeyFixture : public testsupport::PluginFixture
{
protected:
    void TearDown() override;

    /// Starts the plug-in in a station of this shape. Called once, or again after endWorld().
    World &startWorld(const Shape &shape);
    /// Ends the station with all its calls.
    void endWorld();
    /// What breaks when these steps are done on a new station of the shape; empty when nothing does.
    [[nodiscard]] QString replay(const Shape &shape, const Steps &steps);
    /// Called with every new world before anything happens in it.
    std::function<void(World &)> prepare{};
    [[nodiscard]] World &world() const { return *m_world; }

private:
    std::unique_ptr<World> m_world;
};

} // namespace monkey
