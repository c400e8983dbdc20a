// Delivery of a board's mailbox.
// See mailbox.h.
#include "pages/common/mailbox.h"

#include "link/param_table.h"

namespace kestrel {

bool BoardHasTaken(int bank, int parameter, unsigned sent) {
    const bool owed = (ParamFlags(bank, parameter) & flag::WriteDue) != 0;
    return !owed && ParamIsFresh(parameter, bank) && ParamRead(parameter, bank) == ParamValue{sent};
}

}  // namespace kestrel
