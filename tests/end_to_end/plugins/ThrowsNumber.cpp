#include "tests/end_to_end/plugins/FixturePlugin.h"

/// Throws what is no std::exception when its view is to be shown.
class ThrowsNumber : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
protected:
    void viewDidLoad() override { throw 42; }
};

#include "ThrowsNumber.moc"
