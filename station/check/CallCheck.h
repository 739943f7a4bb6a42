#pragma once

#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"
#include "station/check/LuaScript.h"

#include <QHash>
#include <QSet>
#include <QStringList>

class KVKExtensionConfigurationCheck;

namespace station {

/// A function that scripts may call, and who may judge its calls.
struct KnownFunction
{
    KVKBoundFunction function;
    KVKExtensionConfigurationCheck *check; ///< Null when its plug-in judges none.
};

using KnownFunctions = QHash<QString, std::shared_ptr<KnownFunction>>;

/// Finds calls of the plug-ins' functions that would be refused, whatever is not known of them: by the
/// sequencer, or by the plug-in. `own` is what scripts define themselves; `imageFolders` is where the
/// pictures may lie that a sequence names.
///
/// Thread: the main thread.
void checkCalls(LuaScript &script, const KnownFunctions &functions, const QSet<QString> &own,
                const QStringList &imageFolders);

/// Finds names of panels in an operator's script that the station does not have.
void checkPanelKeys(LuaScript &script, const QStringList &panelKeys);

} // namespace station
