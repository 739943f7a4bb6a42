#include <cstdlib>
#include <iostream>

#include "fuzz/Target.h"

namespace fuzz {

void must(bool holds, const char *promise, const QString &detail)
{
    if (holds)
        return;
    std::cerr << "BROKEN PROMISE: " << promise << '\n' << detail.toStdString() << std::endl;
    std::abort();
}

} // namespace fuzz
