// The memory of one simulated board: bytes by 24-bit address, and the parameters that lie in them.
// Two parameters share bytes only where their ranges of addresses overlap, as on a real board.
#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include "simulator/index_files.h"
#include "simulator/types.h"

namespace kestrel::simulator {

class BoardMemory {
  public:
    BoardMemory() = default;  // of a board that is not fitted: no address, no parameter

    // Parameters start with their preload.
    explicit BoardMemory(std::vector<IndexRecord> parameters);

    // Gives an identity record's address this value.
    void addIdentity(int number, const IndexRecord& record, std::uint32_t value);
    // Makes sure that the address can be read; does not touch a value that is there.
    void addByte(std::uint32_t address) { bytes_.try_emplace(address, std::uint8_t{0}); }

    // As over the line, low byte first. Empty or false when one of the addresses does not exist.
    std::optional<Bytes> read(std::uint32_t address, int width) const;
    bool write(std::uint32_t address, const Bytes& data);

    bool has(int parameter) const {
        return parameter >= 1 && static_cast<std::size_t>(parameter) <= parameters_.size();
    }
    // 0 for a number that the board's file does not have.
    std::uint32_t value(int parameter) const;
    // Bytes beyond the parameter's width are cut off; a number that the file does not have is passed over.
    void setValue(int parameter, std::uint32_t value);

    // Which parameter, or identity record, begins at the address; 0 when none does.
    int parameterAt(std::uint32_t address) const;
    int identityAt(std::uint32_t address) const;

  private:
    void store(const IndexRecord& record, std::uint32_t value);

    std::vector<IndexRecord> parameters_;  // element 0 is parameter 1
    std::unordered_map<std::uint32_t, std::uint8_t> bytes_;
    std::unordered_map<std::uint32_t, int> parameterAt_;
    std::unordered_map<std::uint32_t, int> identityAt_;
};

}  // namespace kestrel::simulator
