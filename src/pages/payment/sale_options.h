// Settings of the master that it keeps twice, and the bits of the one that several pages share.
// A page changes its own bits and keeps the others.
#pragma once

#include "link/subscriptions.h"

namespace kestrel {

/// The first parameter is shown; a change is written to it and then to the shadow.
struct MasterSetting {
    int parameter;
    int shadow;
};

inline void WriteSetting(const MasterSetting& setting, unsigned value) {
    WriteTwice(0, setting.parameter, setting.shadow, value);
}

inline constexpr MasterSetting SaleOptions = {84, 86};

// Bits of the sale options.
inline constexpr unsigned AllAtPriceOne = 1;
inline constexpr unsigned ChangeForTokens = 8;
inline constexpr unsigned ReloadForTokens = 16;
inline constexpr unsigned CoinChanger = 32;
inline constexpr unsigned ExactChangeAndTokens = 64;

}  // namespace kestrel
