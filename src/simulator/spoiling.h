// What faults do to a reply on its way to the PC: its bytes, its time, and what comes behind it.
// Faults of boards and of the port are not here; they strike before there is a reply.
#pragma once

#include <string>

#include "simulator/faults.h"
#include "simulator/receiver.h"

namespace kestrel::simulator {

struct Reply {
    Bytes bytes;
    Micros delay = 0;  // from the end of the request
    Bytes noise;       // arrives `noiseGap` after the reply, on the idle line
    Micros noiseGap = 0;
};

// Adds a name to a list of remarks.
void remark(std::string& note, std::string_view what);

// Whether the fault strikes now, as its rate says; notes it if it does.
bool strikes(FaultKind kind, FaultSource& faults, std::string& note);

Bytes someNoise(Random& random);

// Lets each kind of fault strike as its rate says, and notes those that did: on a request on its way to the boards, and
// on a reply.
void spoilRequest(Bytes& request, FaultSource& faults, std::string& note);
void spoil(Reply& reply, const Frame& request, FaultSource& faults, std::string& note);

}  // namespace kestrel::simulator
