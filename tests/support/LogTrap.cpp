#include "tests/support/LogTrap.h"

#include "kovan/KovanLogging/KVKLogging.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>

namespace testsupport {

namespace {

/// Error lines that the running test has written, and those it has announced.
struct Trap
{
    std::mutex mutex;
    QStringList errors;
    QStringList announced;
};

Trap &trap()
{
    static Trap instance;
    return instance;
}

class Listener : public ::testing::EmptyTestEventListener
{
    void OnTestStart(const ::testing::TestInfo &) override
    {
        const std::lock_guard lock(trap().mutex);
        trap().errors.clear();
        trap().announced.clear();
    }

    void OnTestEnd(const ::testing::TestInfo &) override
    {
        const std::lock_guard lock(trap().mutex);
        for (const QString &error : trap().errors) {
            const bool announced = std::any_of(trap().announced.cbegin(), trap().announced.cend(),
                                               [&](const QString &part) { return error.contains(part); });
            if (!announced)
                ADD_FAILURE() << "an unannounced line at error level: " << error.toStdString();
        }
    }
};

} // namespace

void expectError(const QString &part)
{
    const std::lock_guard lock(trap().mutex);
    trap().announced.append(part);
}

void expectErrors()
{
    expectError(QString());
}

void installLogTrap()
{
    KVKLogGetProxy()->addSink([](const KVKLogProxy::Line &line) {
        if (line.level != KVKLogLevel::Error)
            return;
        const std::lock_guard lock(trap().mutex);
        trap().errors.append(line.message);
    });
    // GoogleTest owns its listeners.
    ::testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<Listener>().release());
}

} // namespace testsupport
