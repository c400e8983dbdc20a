// mklang: makes the .lng files of an installation from the language sources, or prints one of them.
// The work is in mklang_command.
#include <iostream>

#include "tools/mklang_command.h"

int main(int argc, char** argv) { return kestrel::mklang::run({argv + 1, argv + argc}, std::cout, std::cerr); }
