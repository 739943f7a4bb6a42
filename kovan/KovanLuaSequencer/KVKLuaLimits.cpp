#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"

QStringList KVKLuaAllowances()
{
    return {QStringLiteral("os.execute"), QStringLiteral("io.popen"), QStringLiteral("os.exit"),
            QStringLiteral("package.loadlib"), QStringLiteral("debug")};
}
