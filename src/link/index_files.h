// The binary index files of the installation: how to ask a board who it is, and its whole parameter table.
// Nothing of a board's memory map is compiled in.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace kestrel {

struct BoardIdentity;

inline constexpr int IdentRecords = 21;           ///< a bank: records 0 to 20; record 0 is not used
inline constexpr int LargestRecordCount = 32767;  ///< of a parameter file

/// How to read one identity value of a board.
struct IdentRecord {
    std::uint8_t Addr2 = 0;
    std::uint8_t Addr1 = 0;
    std::uint8_t Command = 0;
    std::uint8_t Period = 0;
    std::uint8_t Addr0 = 0;
};

/// A bank or an index out of range is a run-time error.
IdentRecord& IdentTable(int bank, int index);

/// Board numbers in the names of the identity files, and what the program needs of a board; by bank.
struct BoardTables {
    std::array<int, 3> boardNumber{};
    std::array<int, 3> requiredSoftware{};
    std::array<int, 3> unused{};  ///< kept with the others; the link has no reader for it
};
const BoardTables& Boards();
/// Fills the tables that are indexed by bank.
void InitBoardTables();

/// "W0256.inx".
std::string IdentityFileName(int boardNumber);
/// "W0256AP03.inx" of type 256, software 15, release 3.
std::string ParameterFileName(int boardType, int software, int release);
std::string ParameterFileName(const BoardIdentity& identity);

/// Reads how to ask the boards of all banks who they are. A file that cannot be read is a run-time error.
void LoadIdentityFiles();
/// Reads the parameter table of the board in CurrentBank. A file that cannot be read is a run-time error.
void LoadParameterFile(const std::string& name);
/// Reads the identity files, identifies each board, and reads the parameter file of each that is there. Any failure
/// shows a message and ends the process.
void LoadIndexFiles();

}  // namespace kestrel
