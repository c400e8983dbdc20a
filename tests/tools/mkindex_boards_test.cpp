// Tests of the boards' tables as they ship: what the pages need of them, and what the scan of the line needs.
// A parameter that is missing, too narrow or read at the wrong pace leaves a page locked or a setting lost.
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <set>

#include "tools/mkindex_format.h"

namespace kestrel::mkindex {
namespace {

struct BoardFiles {
    const char* identity;
    const char* parameters;
};
constexpr std::array<BoardFiles, 3> boards{{{"W0256", "W0256AP03"}, {"W0292", "W0292AP07"}, {"W0245", "W0245AB04"}}};

Table shipped(const char* stem, Layout layout) {
    std::ifstream in(std::string(KESTREL_BOARD_TABLES) + "/" + stem + ".tsv", std::ios::binary);
    return readTable(in, layout);
}

const std::vector<Record>& parametersOf(int bank) {
    static const std::array<Table, 3> tables{shipped(boards[0].parameters, Layout::Parameters),
                                             shipped(boards[1].parameters, Layout::Parameters),
                                             shipped(boards[2].parameters, Layout::Parameters)};
    return tables[static_cast<std::size_t>(bank)].records;
}

/// Once: a poll would undo an edit, or repeat an order. Live: the board changes it and the open page must follow.
enum class Pace { Once, Live };
constexpr Pace once = Pace::Once;
constexpr Pace live = Pace::Live;

struct Need {
    const char* page;
    int bank;
    int first;
    int last;
    double largest;  // the largest value that the page must be able to show or to write
    Pace pace;
};

constexpr Need needs[] = {
    {"presence words", 0, 1, 2, 255, live},
    {"decimals", 0, 3, 3, 255, live},
    {"orders", 0, 4, 6, 255, once},
    {"machine state", 0, 7, 7, 255, live},
    {"preselection prices", 0, 8, 15, 65535, once},
    {"prices", 0, 16, 75, 65535, once},
    {"plus preselection prices", 0, 76, 83, 65535, once},
    {"options and payment system", 0, 84, 87, 255, once},
    {"discounts", 0, 88, 157, 65535, once},
    {"revision", 0, 158, 158, 255, live},
    {"totals", 0, 159, 172, 99999999, once},
    {"preselection counters", 0, 169, 176, 99999999, once},
    {"coin counters", 0, 177, 185, 99999999, once},
    {"MDB audit", 0, 193, 198, 99999999, once},
    {"time bands", 0, 199, 238, 59, once},
    {"clock to set", 0, 239, 243, 99, once},
    {"running clock", 0, 244, 248, 99, live},
    {"master inputs", 0, 249, 249, 255, live},
    {"alarm pointer and ring", 0, 251, 311, 255, live},
    {"coin values", 0, 312, 327, 65535, once},
    {"largest change, coin mask", 0, 328, 331, 65535, once},
    {"largest credit of a key", 0, 332, 332, 65535, live},  // shown only when it comes after the decimals
    {"its copy", 0, 333, 333, 65535, once},
    {"largest credit in coins", 0, 334, 334, 65535, live},  // the same
    {"its copy, tokens", 0, 335, 341, 65535, once},
    {"price time-out", 0, 342, 343, 250, once},
    {"banknote mask", 0, 344, 345, 65535, once},
    {"payment options", 0, 346, 349, 255, once},
    {"display language", 0, 350, 351, 7, once},
    {"overpay time-out", 0, 354, 355, 180, once},
    {"machine number", 0, 356, 356, 999999, once},
    {"location", 0, 357, 357, 65535, once},
    {"telephone code", 0, 358, 358, 999, once},
    {"decimals to set", 0, 359, 360, 3, once},
    {"customer number", 0, 361, 361, 65535, once},
    {"access codes", 0, 362, 367, 99999, once},
    {"test page marks, powder test time", 0, 368, 370, 255, once},

    {"orders", 1, 1, 6, 255, once},
    {"recipes", 1, 7, 1062, 255, once},
    {"selection masks", 1, 1063, 1094, 255, once},
    {"jug portions", 1, 1095, 1126, 99, once},
    {"step masks", 1, 1127, 1142, 255, once},
    {"brewing times", 1, 1143, 1152, 255, once},
    {"machine configuration", 1, 1153, 1162, 255, once},
    {"selection prices", 1, 1163, 1198, 29, once},
    {"boiler set-point and refrigerator", 1, 1199, 1200, 110, once},
    {"copy of the refrigerator", 1, 1202, 1202, 100, once},
    {"revision", 1, 1203, 1203, 255, once},
    {"preventive action", 1, 1204, 1215, 65535, once},
    {"selection counters", 1, 1216, 1287, 65535, once},
    {"boiler temperature", 1, 1288, 1288, 150, live},
    {"inputs", 1, 1289, 1291, 255, live},
    {"outputs", 1, 1292, 1296, 255, live},
    {"test state", 1, 1297, 1297, 255, live},
    {"options and washing dose", 1, 1298, 1303, 255, once},
    {"valve and powder pairing", 1, 1304, 1369, 255, once},
    {"intermittence", 1, 1370, 1392, 255, once},
    {"unique products", 1, 1394, 1411, 255, once},
    {"preselections", 1, 1412, 1435, 255, once},
    {"pump and top-up", 1, 1439, 1442, 255, once},
    {"probe sensitivity", 1, 1443, 1446, 255, once},
    {"plus preselection times", 1, 1447, 1454, 255, once},
    {"free selections", 1, 1455, 1462, 255, once},

    {"sector prices", 2, 1, 48, 29, once},
    {"cooling settings", 2, 51, 57, 255, once},
    {"motor time-out and options", 2, 58, 59, 255, once},
    {"sector counters", 2, 71, 214, 65535, once},
    {"copies of sector prices", 2, 216, 263, 29, once},
    {"copies of settings", 2, 266, 274, 255, once},
    {"revision", 2, 283, 283, 255, once},
    {"orders", 2, 284, 286, 255, once},
    {"tank temperature", 2, 287, 287, 65535, live},
    {"outputs and test state", 2, 288, 290, 255, live},
};

TEST(ShippedBoards, AreSoundTables) {
    for (const BoardFiles& board : boards) {
        for (const auto& [stem, layout] :
             {std::pair{board.identity, Layout::Identity}, std::pair{board.parameters, Layout::Parameters}}) {
            const Table table = shipped(stem, layout);
            EXPECT_FALSE(table.records.empty()) << stem;
            for (const Problem& problem : table.problems) ADD_FAILURE() << stem << ':' << problem.line << problem.text;
        }
    }
}

TEST(ShippedBoards, HaveEveryParameterOfThePagesWideEnoughAndAtItsPace) {
    for (const Need& need : needs) {
        const auto& records = parametersOf(need.bank);
        // The last record of a file is never read, so a page cannot live on it.
        ASSERT_LT(static_cast<std::size_t>(need.last), records.size()) << need.page << ", bank " << need.bank;
        for (int number = need.first; number <= need.last; ++number) {
            const Record& record = records[static_cast<std::size_t>(number - 1)];
            const std::string where = std::string(need.page) + ", bank " + std::to_string(need.bank) + ", parameter " +
                                      std::to_string(number) + " " + record.name;
            EXPECT_FALSE(record.name.empty()) << where;
            EXPECT_GE(1ULL << (8 * record.width()), static_cast<std::uint64_t>(need.largest) + 1) << where;
            EXPECT_EQ(record.refresh != 0, need.pace == Pace::Live) << where;
        }
    }
}

// Such a record is sent without end while its board is silent, and nothing else is read meanwhile.
TEST(ShippedBoards, HaveNoRecordThatHoldsTheLine) {
    for (int bank = 0; bank < 3; ++bank) {
        for (const Record& record : parametersOf(bank)) EXPECT_EQ(record.refresh & 2, 0) << record.name;
    }
}

TEST(ShippedBoards, IdentityRecordsAreThereAndApartFromTheParameters) {
    for (std::size_t bank = 0; bank < boards.size(); ++bank) {
        std::set<std::uint32_t> taken{0};  // the port probe reads address 0 before any board is known
        for (const Record& record : parametersOf(static_cast<int>(bank))) {
            for (int offset = 0; offset < record.width(); ++offset) {
                EXPECT_TRUE(taken.insert(record.address + static_cast<std::uint32_t>(offset)).second)
                    << boards[bank].parameters << ' ' << record.number;
            }
        }
        const Table identity = shipped(boards[bank].identity, Layout::Identity);
        ASSERT_EQ(identity.records.size(), 20U);
        for (const Record& record : identity.records) {
            EXPECT_TRUE(taken.insert(record.address).second) << boards[bank].identity << ' ' << record.number;
            EXPECT_EQ(record.width(), 1) << "an identity is asked for as one byte";
        }
        for (const std::size_t number : {1U, 11U, 12U, 13U, 14U, 17U, 18U}) {
            EXPECT_FALSE(identity.records[number - 1].name.empty()) << boards[bank].identity << ' ' << number;
        }
    }
}

// An alarm shows at once in its own slot only if the pointer and the ring come in the same pass.
TEST(ShippedBoards, AlarmPointerAndRingKeepStep) {
    const auto& records = parametersOf(0);
    for (int number = 252; number <= 311; ++number) {
        EXPECT_EQ(records[static_cast<std::size_t>(number - 1)].refresh, records[251 - 1].refresh) << number;
    }
}

// The files that the build laid out are the tables, byte for byte.
TEST(ShippedBoards, AreInTheInstallation) {
    for (const BoardFiles& board : boards) {
        for (const auto& [stem, layout] :
             {std::pair{board.identity, Layout::Identity}, std::pair{board.parameters, Layout::Parameters}}) {
            std::ifstream in(std::string(KESTREL_INSTALLATION) + "/" + stem + ".inx", std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(in), {}};
            EXPECT_EQ(bytes, encode(shipped(stem, layout).records, layout)) << stem;
        }
    }
}

}  // namespace
}  // namespace kestrel::mkindex
