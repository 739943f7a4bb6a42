#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"

#include <QObject>

/// Claims the interface in its metadata and does not implement it.
class OtherObject : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
};

#include "OtherObject.moc"
