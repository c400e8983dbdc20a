// The fuzzer's way in: one program a target, KESTREL_FUZZ_TARGET. At its start it writes its seeds into the directory
// that the environment names.
#include <cstdlib>
#include <fstream>

#include "fuzz/seeds.h"
#include "fuzz/targets.h"

#define NAME_OF(target) #target
#define TEXT_OF(target) NAME_OF(target)

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const char* const directory = std::getenv("KESTREL_FUZZ_SEEDS");
    for (const auto& seed : kestrel::fuzz::seeds())
        if (directory && seed.target == std::string(TEXT_OF(KESTREL_FUZZ_TARGET)))
            std::ofstream(std::string(directory) + "/" + seed.name, std::ios::binary) << seed.bytes;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kestrel::fuzz::KESTREL_FUZZ_TARGET(data, size);
    return 0;
}
