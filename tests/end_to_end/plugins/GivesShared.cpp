#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "platform/Error.h"
#include "tests/end_to_end/plugins/FixturePlugin.h"

/// Offers a function of a name that the sequencer gives.
class GivesShared : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    platform::Dictionary pluginFunctionTable() override
    {
        return {{QStringLiteral("shared"), platform::Array{__kviGetSelectorLabel("shared:")}}};
    }

    Q_INVOKABLE platform::Value shared(platform::Error *) { return {}; }
};

#include "GivesShared.moc"
