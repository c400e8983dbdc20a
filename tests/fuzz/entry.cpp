// The fuzzer's way in: one program a target.
// KESTREL_FUZZ_TARGET is the target's name.
#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kestrel::fuzz::KESTREL_FUZZ_TARGET(data, size);
    return 0;
}
