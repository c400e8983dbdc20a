// The bits of the sale options, which several pages share.
// A page changes its own bits and keeps the others.
#pragma once

namespace kestrel {

inline constexpr unsigned AllAtPriceOne = 1;
inline constexpr unsigned ChangeForTokens = 8;
inline constexpr unsigned ReloadForTokens = 16;
inline constexpr unsigned CoinChanger = 32;
inline constexpr unsigned ExactChangeAndTokens = 64;

}  // namespace kestrel
