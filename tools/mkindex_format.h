// The two ends of an index file: the readable table that it is made from, and the bare run of records that it is.
// Reading a table collects every mistake with its line, so that one run shows all that is wrong with it.
#pragma once

#include <cstdint>
#include <istream>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tools/catalogue.h"

namespace kestrel::mkindex {

/// An identity file has records of 5 bytes (who is this board), a parameter file has records of 9.
enum class Layout { Identity, Parameters };

/// Identity tables of the program hold 20 records; a longer file is refused by it.
constexpr int maxIdentityNumber = 20;

/// One record; its number is its place in the file, from 1.
struct Record {
    int number = 0;
    std::string name;           ///< empty for a record without a row in the table
    std::uint8_t command = 0;   ///< low nibble: value bytes minus 1
    std::uint8_t refresh = 0;   ///< low nibble L: read on every (L + 1)-th pass of the scan; 0: once
    std::uint32_t address = 0;  ///< 24 bits; the low byte goes first on the line
    std::uint32_t preload = 0;  ///< value before the board has answered; none in an identity file

    int width() const { return (command & 0x0F) + 1; }
};

/// What a table says. `records` is complete, unused numbers included, if and only if `problems` is empty.
struct Table {
    std::vector<Record> records;
    std::vector<tables::Problem> problems;
};

/// Capital hexadecimal digits, padded with zeros.
std::string hexText(std::uint32_t value, int digits);

/// "W", four digits and ".inx" name an identity file; every other name is a parameter file's.
Layout layoutOfName(std::string_view fileName);

// Numbers without a row become records of one byte, read once, each with a free address of its own. An identity table
// is filled up to its 20 records; a parameter table, whose names the catalogue must have, gets one record more than its
// last number.
Table readIdentityTable(std::istream& in);
Table readParameterTable(std::istream& in, const tables::Catalogue& catalogue);

/// The bytes of the file. Records stand in order, without gaps.
std::string encode(const std::vector<Record>& records, Layout layout);

/// The records of any file, sound or not, without names. A trailing piece of a record is left out.
std::vector<Record> decode(std::string_view bytes, Layout layout);

/// Prints any file as text, a line a record, with the names given; remarks on bytes that no table can produce.
void print(std::ostream& out, std::string_view bytes, Layout layout, const std::map<int, std::string>& names);

}  // namespace kestrel::mkindex
