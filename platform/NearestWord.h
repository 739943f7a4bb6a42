#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// The known word that a word was probably meant to be; empty when none is near. Of several that are equally
/// near, the first. Thread: any.
[[nodiscard]] QString nearestWord(const QString &word, const QStringList &known);

} // namespace platform
