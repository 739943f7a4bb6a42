#pragma once

#include "tests/monkey/World.h"
#include "tests/support/PluginFixture.h"

#include <memory>

namespace monkey {

/// A station for calls and operators at random. At the end the calls that still wait are interrupted.
///
/// Thread: the main thread.
class MonkeyFixture : public testsupport::PluginFixture
{
protected:
    void TearDown() override;

    /// Starts the plug-in in a station of this shape. Called once.
    World &startWorld(const Shape &shape);
    [[nodiscard]] World &world() const { return *m_world; }

private:
    std::unique_ptr<World> m_world;
};

} // namespace monkey
