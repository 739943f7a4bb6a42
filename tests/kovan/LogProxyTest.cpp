#include "kovan/KovanLogging/KVKLogging.h"
#include "tests/support/LogRecorder.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <spdlog/sinks/base_sink.h>

#include <stdexcept>

using testsupport::LogRecorder;

namespace {

using Lines = std::vector<LogRecorder::Line>;

TEST(LogEvent, IsWrittenOnceToBothPlacesAtItsLevel)
{
    const LogRecorder recorder;
    KVKLogEvent(KVKLogLevel::Default, "%s: %@ [%ld]", {"-[Here there:]", "G1", 3});
    KVKLogEvent(KVKLogLevel::Debug, "%f, %d, %lu%%", {1.5, -2, 3});
    const Lines expected{{KVKLogLevel::Default, "-[Here there:]: G1 [3]"},
                         {KVKLogLevel::Debug, "1.500000, -2, 3%"}};
    EXPECT_EQ(recorder.systemLines(), expected);
    EXPECT_EQ(recorder.proxyLines(), expected);
}

TEST(LogEvent, TakesTheTextOfAPersonAsItIs)
{
    const LogRecorder recorder;
    KVKLogEvent(KVKLogLevel::Default, "%@", {"{} {0} %s %n {:>99}"});
    const Lines expected{{KVKLogLevel::Default, "{} {0} %s %n {:>99}"}};
    EXPECT_EQ(recorder.systemLines(), expected);
    EXPECT_EQ(recorder.proxyLines(), expected);
}

TEST(LogEvent, NothingIsWrittenAsNull)
{
    const LogRecorder recorder;
    KVKLogEvent(KVKLogLevel::Default, "%@ %s", {nullptr, platform::Value()});
    EXPECT_EQ(recorder.count(KVKLogLevel::Default, "(null) (null)"), 1);
}

TEST(LogEvent, AFormatThatAsksForMoreThanThereIsIsTold)
{
    EXPECT_THROW(KVKLogEvent(KVKLogLevel::Default, "%@ %@", {"one"}), std::invalid_argument);
}

class ThrowingSink : public spdlog::sinks::base_sink<std::mutex>
{
protected:
    void sink_it_(const spdlog::details::log_msg &) override { throw 7; }
    void flush_() override {}
};

TEST(LogEvent, ASystemLogThatFailsDoesNotKeepTheLineFromTheProxy)
{
    const LogRecorder recorder;
    const auto before = KVKLogGetAnchor()->logger();
    KVKLogGetAnchor()->setLogger(std::make_shared<spdlog::logger>("bad", std::make_shared<ThrowingSink>()));
    EXPECT_NO_THROW(KVKLogEvent(KVKLogLevel::Default, "a line", {}));
    KVKLogGetAnchor()->setLogger(before);
    EXPECT_EQ(recorder.proxyLines(), (Lines{{KVKLogLevel::Default, "a line"}}));
}

TEST(LogProxy, ReceiversAreToldInTheOrderInWhichTheyCame)
{
    KVKLogProxy proxy;
    QStringList told;
    proxy.addSink([&](const KVKLogProxy::Line &line) { told.append("1 " + line.message); });
    proxy.addSink([&](const KVKLogProxy::Line &line) { told.append("2 " + line.message); });
    proxy.proxyLogMessage(KVKLogLevel::Debug, "%@", {"x"});
    EXPECT_EQ(told, (QStringList{"1 x", "2 x"}));
}

TEST(LogProxy, AReceiverThatThrowsDoesNotKeepTheLineFromTheNext)
{
    KVKLogProxy proxy;
    int told = 0;
    proxy.addSink([](const KVKLogProxy::Line &) { throw std::runtime_error("full"); });
    proxy.addSink([&](const KVKLogProxy::Line &) { ++told; });
    EXPECT_NO_THROW(proxy.proxyLogMessage(KVKLogLevel::Debug, "x", {}));
    EXPECT_EQ(told, 1);
}

TEST(LogProxy, ARemovedReceiverIsNotToldAnyMore)
{
    KVKLogProxy proxy;
    int first = 0;
    int second = 0;
    const auto id = proxy.addSink([&](const KVKLogProxy::Line &) { ++first; });
    proxy.addSink([&](const KVKLogProxy::Line &) { ++second; });
    proxy.removeSink(id);
    proxy.proxyLogMessage(KVKLogLevel::Debug, "x", {});
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

} // namespace
