// Seven places where bytes from outside enter: each takes any bytes and must come back, whatever they are.
// A fuzzer calls one of them without end; the tests call them with the seeds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace kestrel::fuzz {

void index(const std::uint8_t* data, std::size_t size);          ///< an identity or parameter file at start-up
void language(const std::uint8_t* data, std::size_t size);       ///< two language files
void configuration(const std::uint8_t* data, std::size_t size);  ///< the two configuration files
void reply(const std::uint8_t* data, std::size_t size);          ///< what comes in on the line, in pieces
void frame(const std::uint8_t* data, std::size_t size);          ///< what the simulated boards hear
void options(const std::uint8_t* data, std::size_t size);        ///< the command line, an argument a line
void settings(const std::uint8_t* data, std::size_t size);       ///< a file of settings for kestrelctl

/// The bytes before and behind the first byte 255, as text; the second is empty where there is none.
std::pair<std::string, std::string> twoTexts(const std::uint8_t* data, std::size_t size);

}  // namespace kestrel::fuzz
