#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "platform/Error.h"
#include "tests/end_to_end/plugins/FixturePlugin.h"

/// Offers a function of a name that the real plug-in has too.
class SameFunction : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    platform::Dictionary pluginFunctionTable() override
    {
        return {{QStringLiteral("setLoop"), platform::Array{__kviGetSelectorLabel("setLoop:")}}};
    }

    Q_INVOKABLE platform::Value setLoop(platform::Error *) { return {}; }
};

#include "SameFunction.moc"
