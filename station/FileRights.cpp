#include "station/FileRights.h"

#include <optional>
#include <sys/stat.h>

namespace station {

namespace {

constexpr mode_t NothingForOthers = S_IRWXG | S_IRWXO;
/// As the user has it.
std::optional<mode_t> usersMask;

} // namespace

void makeFilesPrivate()
{
    const mode_t before = ::umask(NothingForOthers);
    if (!usersMask)
        usersMask = before;
}

void makeFilesShared()
{
    if (usersMask)
        ::umask(*usersMask);
}

} // namespace station
