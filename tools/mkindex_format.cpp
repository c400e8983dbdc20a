// The record layouts of index files: which file has which, writing, reading back and printing.
// The order of bytes in a record is the boards' own: two address bytes, command, refresh, then the low address byte.
#include "tools/mkindex_format.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace kestrel::mkindex {
namespace {

constexpr std::size_t preloadBytes = 4;

std::size_t recordSize(Layout layout) { return layout == Layout::Identity ? 5 : 5 + preloadBytes; }

char byteOf(std::uint32_t value, int place) { return static_cast<char>((value >> (8 * place)) & 0xFF); }

std::string remarks(const Record& record) {
    std::string text;
    const int width = record.width();
    if (record.command > 0x0F || (width != 1 && width != 2 && width != 4)) {
        text += " command byte " + hexText(record.command, 2);
    }
    if (record.refresh > 0x0F) text += " refresh byte " + hexText(record.refresh, 2);
    return text.empty() ? text : "\t#" + text;
}

}  // namespace

std::string hexText(std::uint32_t value, int digits) {
    std::ostringstream text;
    text << std::uppercase << std::hex << std::setfill('0') << std::setw(digits) << value;
    return text.str();
}

Layout layoutOfName(std::string_view fileName) {
    constexpr std::string_view extension = ".inx";
    const bool identity = fileName.size() == 5 + extension.size() && fileName.front() == 'W' &&
                          fileName.substr(5) == extension &&
                          fileName.substr(1, 4).find_first_not_of("0123456789") == std::string_view::npos;
    return identity ? Layout::Identity : Layout::Parameters;
}

std::string encode(const std::vector<Record>& records, Layout layout) {
    std::string bytes;
    bytes.reserve(records.size() * recordSize(layout));
    for (const Record& record : records) {
        bytes += byteOf(record.address, 2);
        bytes += byteOf(record.address, 1);
        bytes += static_cast<char>(record.command);
        bytes += static_cast<char>(record.refresh);
        bytes += byteOf(record.address, 0);
        if (layout == Layout::Identity) continue;
        for (int place = 0; place < static_cast<int>(preloadBytes); ++place) bytes += byteOf(record.preload, place);
    }
    return bytes;
}

std::vector<Record> decode(std::string_view bytes, Layout layout) {
    std::vector<Record> records;
    const std::size_t size = recordSize(layout);
    for (std::size_t start = 0; start + size <= bytes.size(); start += size) {
        const auto at = [&](std::size_t offset) { return static_cast<std::uint8_t>(bytes[start + offset]); };
        Record record;
        record.number = static_cast<int>(records.size()) + 1;
        record.address = (std::uint32_t{at(0)} << 16) | (std::uint32_t{at(1)} << 8) | at(4);
        record.command = at(2);
        record.refresh = at(3);
        for (std::size_t offset = size; offset-- > 5;) record.preload = (record.preload << 8) | at(offset);
        records.push_back(record);
    }
    return records;
}

void print(std::ostream& out, std::string_view bytes, Layout layout, const std::map<int, std::string>& names) {
    const bool identity = layout == Layout::Identity;
    out << "number\tname\twidth\trefresh\taddress" << (identity ? "\n" : "\tpreload\n");
    for (const Record& record : decode(bytes, layout)) {
        const auto name = names.find(record.number);
        out << record.number << '\t' << (name == names.end() || name->second.empty() ? "-" : name->second) << '\t'
            << record.width() << '\t' << (record.refresh & 0x0F) << '\t' << hexText(record.address, 6);
        if (!identity) out << '\t' << record.preload;
        out << remarks(record) << '\n';
    }
    if (const std::size_t rest = bytes.size() % recordSize(layout)) {
        out << "# " << rest << " more bytes are no whole record\n";
    }
}

}  // namespace kestrel::mkindex
