// A piece of the program's process-wide state. Its functions are free, its struct stands in their own .cpp file, and a
// session owns one of each: so all state comes and goes with the session, and a floor names the structs of its own
// alone.
#pragma once

namespace kestrel {

/// Holds the state of a module; the module's functions work on it from the holder's birth to its death. One at a time:
/// a second one is a programming error, and so is a call of a function with none.
template <class State>
class Module {
  public:
    Module();
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    /// A new state takes the place of the one in force.
    static void renew();
};

}  // namespace kestrel
