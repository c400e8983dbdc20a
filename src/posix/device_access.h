// Who may use a device and who does, for whoever cannot open it.
// The system has one code for several reasons; files and processes tell them apart.
#pragma once

#include <string>

namespace kestrel::posix {

bool isPermitted(const std::string& device);
/// The group whose members may use the device, if that is how it is shared, and how to become one, behind "; " in the
/// user's language; else empty.
std::string groupHint(const std::string& device);
/// Name and number of another program that has the device open; empty where there is none, or the system does not show
/// it.
std::string holderOf(const std::string& device);

}  // namespace kestrel::posix
