// mkcatalogue: makes the program's names of all parameters from the boards' catalogues.
// See mkcatalogue_command.cpp for what it does.
#include <iostream>

#include "tools/mkcatalogue_command.h"

int main(int count, char** values) {
    return kestrel::mkcatalogue::run(std::vector<std::string>(values + 1, values + count), std::cout, std::cerr);
}
