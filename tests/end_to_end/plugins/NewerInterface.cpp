#include "tests/end_to_end/plugins/FixturePlugin.h"

/// Built with an interface to which something has been added that this host does not have.
class NewerInterface : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.kovan.UIExtension.InteractiveView/1.9999")
    Q_INTERFACES(KVKExtensionInteractiveView)
};

#include "NewerInterface.moc"
