// What the targets are first called with: one input of each kind that takes another way through the program.
// A fuzzer changes them on and on, the tests cut them and change single bytes. What breaks a target is added here.
#pragma once

#include <string>
#include <vector>

namespace kestrel::fuzz {

struct Seed {
    const char *target, *name;
    std::string bytes;
};
std::vector<Seed> seeds();

}  // namespace kestrel::fuzz
