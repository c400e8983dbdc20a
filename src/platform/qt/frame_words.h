// The words of the frame window that no language file has.
// Their one home: a language table that gets lines for them is read here and nowhere else.
#pragma once

namespace kestrel::qt::words {

inline constexpr const char* NextWindow = "Next";
inline constexpr const char* PreviousWindow = "Previous";
inline constexpr const char* Cascade = "Cascade";
inline constexpr const char* Tile = "Tile";
inline constexpr const char* CloseAll = "Close All";

inline constexpr const char* SendLamp = "Send";
inline constexpr const char* ReceiveLamp = "Receive";
inline constexpr const char* ErrorLamp = "Error";
inline constexpr const char* LampOn = "on";
inline constexpr const char* LampOff = "off";

}  // namespace kestrel::qt::words
