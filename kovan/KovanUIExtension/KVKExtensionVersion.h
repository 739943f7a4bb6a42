#pragma once

#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"

#include <QString>

// Which plug-ins a host can load. The name of the interface that a plug-in was built with stands in its
// metadata, where a host reads it before any of the plug-in's code runs. It ends with the interface's
// version, two numbers: the first one counts what breaks a plug-in that is not built anew, the second one
// what is added. Thread: any.

/// Whether a host that was built with the interface `wanted` ("name/1.3") can load a plug-in that was built
/// with `offered`: name and first number are the same, and the second one is not greater. A text that is no
/// such name fits nothing.
[[nodiscard]] bool KVKInterfaceFits(const QString &offered, const QString &wanted);

/// The plug-in that a library's root object is; null when it is none. `offered` is what stands in the
/// library's metadata and fits: the object knows its interface by that name, which may be an older one than
/// the host's. Ownership: that of the object.
[[nodiscard]] KVKExtensionInteractiveView *KVKExtensionOf(QObject *root, const QString &offered);
