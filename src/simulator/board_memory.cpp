// The memory of one simulated board.
// Values lie low byte first at rising addresses.
#include "simulator/board_memory.h"

#include <utility>

namespace kestrel::simulator {
namespace {

std::uint32_t addressOf(const IndexRecord& record, int byte) {
    return record.address + static_cast<std::uint32_t>(byte);
}

int numberAt(const std::unordered_map<std::uint32_t, int>& numbers, std::uint32_t address) {
    const auto found = numbers.find(address);
    return found == numbers.end() ? 0 : found->second;
}

}  // namespace

BoardMemory::BoardMemory(std::vector<IndexRecord> parameters) : parameters_(std::move(parameters)) {
    int number = 0;
    for (const IndexRecord& record : parameters_) {
        store(record, record.preload);
        parameterAt_.try_emplace(record.address, ++number);
    }
}

void BoardMemory::addIdentity(int number, const IndexRecord& record, std::uint32_t value) {
    store(record, value);
    identityAt_[record.address] = number;
}

std::optional<Bytes> BoardMemory::read(std::uint32_t address, int width) const {
    Bytes data;
    for (int i = 0; i < width; ++i) {
        const auto found = bytes_.find(address + static_cast<std::uint32_t>(i));
        if (found == bytes_.end()) return std::nullopt;
        data.push_back(found->second);
    }
    return data;
}

bool BoardMemory::write(std::uint32_t address, const Bytes& data) {
    if (!read(address, static_cast<int>(data.size()))) return false;
    for (const std::uint8_t byte : data) bytes_[address++] = byte;
    return true;
}

std::uint32_t BoardMemory::value(int parameter) const {
    if (!has(parameter)) return 0;
    const IndexRecord& record = parameters_[static_cast<std::size_t>(parameter - 1)];
    std::uint32_t value = 0;
    for (int i = record.width; i-- > 0;) value = value << 8 | bytes_.at(addressOf(record, i));
    return value;
}

void BoardMemory::setValue(int parameter, std::uint32_t value) {
    if (has(parameter)) store(parameters_[static_cast<std::size_t>(parameter - 1)], value);
}

int BoardMemory::parameterAt(std::uint32_t address) const { return numberAt(parameterAt_, address); }

int BoardMemory::identityAt(std::uint32_t address) const { return numberAt(identityAt_, address); }

void BoardMemory::store(const IndexRecord& record, std::uint32_t value) {
    for (int i = 0; i < record.width; ++i) {
        bytes_[addressOf(record, i)] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

}  // namespace kestrel::simulator
