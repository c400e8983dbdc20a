// All process-wide state of a program that has a line and no window, a module a line.
// Born in this order and gone in the opposite one; the platform is there before and after.
#pragma once

#include "link/line_session.h"

namespace kestrel {

struct LanguageState;
struct WordState;

namespace ctl {

struct Session {
    Session();
    ~Session();

    LineSession line;
    // language
    Module<LanguageState> texts;
    // ctl
    Module<WordState> words;
};

}  // namespace ctl
}  // namespace kestrel
