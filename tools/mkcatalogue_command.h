// The command line of mkcatalogue, apart from main() so that tests can run it.
// Exit status: 0 done, 1 a bad catalogue or file (told on `err`), 2 a bad command line.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace kestrel::mkcatalogue {

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace kestrel::mkcatalogue
