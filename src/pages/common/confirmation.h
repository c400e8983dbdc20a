// The one question before data are destroyed.
// Its words are the same wherever it is asked.
#pragma once

namespace kestrel {

/// Asks whether data may be erased for good; true on Yes alone.
bool ConfirmClearing();

}  // namespace kestrel
