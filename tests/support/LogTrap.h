#pragma once

#include <QString>

namespace testsupport {

/// Lets the running test write lines at error level that hold the text; any other such line fails the test.
/// Thread: the main thread.
void expectError(const QString &part);
/// Lets the running test write any lines at error level.
void expectErrors();

/// Installs the trap for all tests of the program. Called by main.
void installLogTrap();

} // namespace testsupport
