// mkindex: makes the boards' index files from readable tables and prints such files as text.
// See mkindex_command.cpp for what it does.
#include <iostream>

#include "tools/mkindex_command.h"

int main(int count, char** values) {
    return kestrel::mkindex::run(std::vector<std::string>(values + 1, values + count), std::cout, std::cerr);
}
