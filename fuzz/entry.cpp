// libFuzzer's entry. Which of the targets it runs is told by the build.

#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    TAVOLINS_FUZZ_TARGET(data, size);
    return 0;
}
