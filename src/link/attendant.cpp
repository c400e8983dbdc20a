// What the link has to say to the user, and to ask.
#include "link/attendant.h"

#include "platform/errors.h"
#include "platform/module_state.h"

namespace kestrel {

struct Attending {
    LinkAttendant* attendant = nullptr;
};
template class Module<Attending>;

void SetAttendant(LinkAttendant* attendant) { stateOf<Attending>().attendant = attendant; }

LinkAttendant& Attendant() {
    LinkAttendant* const attendant = stateOf<Attending>().attendant;
    if (!attendant) throw ProgrammingError("The link was interrupted before anybody attended to it");
    return *attendant;
}

}  // namespace kestrel
