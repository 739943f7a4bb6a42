#include "kovan/KovanUIExtension/KVKExtensionVersion.h"

#include <QObject>

#include <gtest/gtest.h>

namespace {

struct Meeting
{
    const char *offered;
    const char *wanted;
    bool fits;
};

class InterfaceMeeting : public ::testing::TestWithParam<Meeting>
{};

TEST_P(InterfaceMeeting, DecidesWhetherAHostCanLoadAPlugin)
{
    EXPECT_EQ(KVKInterfaceFits(QLatin1String(GetParam().offered), QLatin1String(GetParam().wanted)),
              GetParam().fits)
        << GetParam().offered << " in a host with " << GetParam().wanted;
}

INSTANTIATE_TEST_SUITE_P(
    Versions, InterfaceMeeting,
    ::testing::Values(
        // the same one; one that lacks what was added since; one that may use what is missing
        Meeting{"a.b/1.0", "a.b/1.0", true}, Meeting{"a.b/1.2", "a.b/1.10", true},
        Meeting{"a.b/1.10", "a.b/1.2", false},
        // another break, older or newer
        Meeting{"a.b/1.0", "a.b/2.0", false}, Meeting{"a.b/2.0", "a.b/1.0", false},
        // something else
        Meeting{"a.c/1.0", "a.b/1.0", false}, Meeting{"", "a.b/1.0", false}, Meeting{"", "", false},
        Meeting{"a.b/1", "a.b/1.0", false}, Meeting{"a.b/1.0.1", "a.b/1.0", false},
        Meeting{"a.b/1.00", "a.b/1.0", false}, Meeting{"a.b/1.0\n", "a.b/1.0", false},
        Meeting{"a.b/-1.0", "a.b/1.0", false}, Meeting{"a.b/1.99999999999", "a.b/1.0", false}));

/// The root object of a plug-in that was built with an older interface: it does not know the present name.
class OlderPlugin : public QObject, public KVKExtensionInteractiveView
{
public:
    void *qt_metacast(const char *name) override
    {
        return qstrcmp(name, "a.b/0.7") == 0 ? static_cast<KVKExtensionInteractiveView *>(this) : nullptr;
    }
    QObject *pluginContext() override { return this; }
    platform::Dictionary pluginConstants() override { return {}; }
    platform::Dictionary pluginFunctionTable() override { return {}; }
    double minHeightHint() override { return 7.0; }
    double minWidthHint() override { return 0.0; }
};

TEST(InterfaceVersion, AnObjectIsAskedByTheNameThatItWasBuiltWith)
{
    OlderPlugin plugin;
    EXPECT_EQ(qobject_cast<KVKExtensionInteractiveView *>(&plugin), nullptr);
    KVKExtensionInteractiveView *extension = KVKExtensionOf(&plugin, QStringLiteral("a.b/0.7"));
    ASSERT_NE(extension, nullptr);
    EXPECT_EQ(extension->minHeightHint(), 7.0);
    QObject other;
    EXPECT_EQ(KVKExtensionOf(&other, QStringLiteral("a.b/0.7")), nullptr);
    EXPECT_EQ(KVKExtensionOf(nullptr, QStringLiteral("a.b/0.7")), nullptr);
}

} // namespace
