#include <cstddef>
#include <cstdint>

#include "fuzz/Surroundings.h"
#include "fuzz/Target.h"

// What the fuzzer calls; the names are its own.

namespace {

fuzz::Target &target(std::unique_ptr<fuzz::Target> made = nullptr)
{
    // Never destroyed: the fuzzer ends the process wherever it is.
    static fuzz::Target &instance = *made.release();
    return instance;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static_cast<void>(std::make_unique<fuzz::Surroundings>(*argc, *argv).release());
    target(fuzz::makeTarget());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    target().feed(
        fuzz::Input(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size))));
    return 0;
}
