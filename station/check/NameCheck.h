#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaVocabulary.h"
#include "station/check/LuaScript.h"

#include <QHash>
#include <QSet>
#include <QString>

namespace station {

/// The names that a script finds when it runs.
struct KnownNames
{
    KVKLuaVocabulary library;
    QSet<QString> globals;              ///< Besides Lua's own.
    QHash<QString, QStringList> fields; ///< Of those among them that are tables of known content.
    QHash<QString, QString> elsewhere;  ///< Names that other scripts find, with where that is.
    QString reader;                     ///< Who is refused: "a sequence".
};

/// What stands behind the refusal of something that the configuration could allow.
[[nodiscard]] QString adviceFor(const QString &allowance);

/// Finds the names in a script that there are not, and those that are refused.
///
/// `own` is what the script and those that it is loaded with define; nothing is said of unknown globals when
/// it is not known what that is. Thread: that of the script.
void checkNames(LuaScript &script, const KnownNames &known, const QSet<QString> &own, bool definesAnything);

} // namespace station
