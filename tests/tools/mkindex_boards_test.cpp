// Tests of the boards' tables as they ship: what the pages need of them, and what the scan of the line needs.
// A parameter that is missing, too narrow or read at the wrong pace leaves a page locked or a setting lost.
#include <array>
#include <set>

#include "tool_test.h"
#include "tools/mkindex_format.h"

namespace kestrel::mkindex {
namespace {

struct File {
    const char* stem;
    const char* catalogue;  // none for an identity
    Layout layout() const { return catalogue ? Layout::Parameters : Layout::Identity; }
};
/// By bank.
constexpr File identityFiles[] = {{"W0256", nullptr}, {"W0292", nullptr}, {"W0245", nullptr}};
constexpr File parameterFiles[] = {{"W0256AP03", "master"}, {"W0292AP07", "hot_drink"}, {"W0245AB04", "sector"}};

Table shipped(const File& file) {
    const std::string data = KESTREL_DATA;
    std::ifstream in(data + "/boards/" + file.stem + ".tsv", std::ios::binary);
    if (!file.catalogue) return readIdentityTable(in);
    std::ifstream catalogue(data + "/catalogue/" + file.catalogue + ".tsv", std::ios::binary);
    return readParameterTable(in, tables::readCatalogue(catalogue));
}

const std::vector<Record>& parametersOf(int bank) {
    static const std::array<Table, 3> tables{shipped(parameterFiles[0]), shipped(parameterFiles[1]),
                                             shipped(parameterFiles[2])};
    return tables[static_cast<std::size_t>(bank)].records;
}

/// Once: a poll would undo an edit, or repeat an order. Live: the board changes it and the open page must follow.
enum class Pace { Once, Live };
constexpr Pace once = Pace::Once;
constexpr Pace live = Pace::Live;

struct Need {
    int bank;
    int first;
    int last;
    int bytes;  // that the page must be able to show or to write
    Pace pace;
};

// The largest credits (332 and 334 of the master) are shown only when they come after the decimals.
constexpr Need needs[] = {
    {0, 1, 3, 1, live},       {0, 4, 6, 1, once},       {0, 7, 7, 1, live},       {0, 8, 83, 2, once},
    {0, 84, 87, 1, once},     {0, 88, 157, 2, once},    {0, 158, 158, 1, live},   {0, 159, 185, 4, once},
    {0, 193, 198, 4, once},   {0, 199, 243, 1, once},   {0, 244, 249, 1, live},   {0, 251, 311, 1, live},
    {0, 312, 331, 2, once},   {0, 332, 332, 2, live},   {0, 333, 333, 2, once},   {0, 334, 334, 2, live},
    {0, 335, 341, 2, once},   {0, 342, 343, 1, once},   {0, 344, 345, 2, once},   {0, 346, 351, 1, once},
    {0, 354, 355, 1, once},   {0, 356, 356, 4, once},   {0, 357, 358, 2, once},   {0, 359, 360, 1, once},
    {0, 361, 361, 2, once},   {0, 362, 367, 4, once},   {0, 368, 370, 1, once},   {1, 1, 1200, 1, once},
    {1, 1202, 1203, 1, once}, {1, 1204, 1287, 2, once}, {1, 1288, 1297, 1, live}, {1, 1298, 1392, 1, once},
    {1, 1394, 1435, 1, once}, {1, 1439, 1462, 1, once}, {2, 1, 48, 1, once},      {2, 51, 59, 1, once},
    {2, 71, 214, 2, once},    {2, 216, 263, 1, once},   {2, 266, 274, 1, once},   {2, 283, 286, 1, once},
    {2, 287, 287, 2, live},   {2, 288, 290, 1, live}};

// The files that the build laid out are the tables, byte for byte.
TEST(ShippedBoards, AreSoundTablesAndStandInTheInstallation) {
    for (const auto& files : {identityFiles, parameterFiles}) {
        for (int bank = 0; bank < 3; ++bank) {
            const File& file = files[bank];
            const Table table = shipped(file);
            EXPECT_FALSE(table.records.empty()) << file.stem;
            for (const tables::Problem& problem : table.problems)
                ADD_FAILURE() << file.stem << ':' << problem.line << problem.text;
            const std::string installed = std::string(KESTREL_INSTALLATION) + "/" + file.stem + ".inx";
            EXPECT_EQ(kestrel::testing::fileContent(installed), encode(table.records, file.layout())) << file.stem;
        }
    }
}

TEST(ShippedBoards, HaveEveryParameterOfThePagesWideEnoughAndAtItsPace) {
    for (const Need& need : needs) {
        const auto& records = parametersOf(need.bank);
        // The last record of a file is never read, so a page cannot live on it.
        ASSERT_LT(static_cast<std::size_t>(need.last), records.size()) << "bank " << need.bank;
        for (int number = need.first; number <= need.last; ++number) {
            const Record& record = records[static_cast<std::size_t>(number - 1)];
            const std::string where =
                "bank " + std::to_string(need.bank) + ", parameter " + std::to_string(number) + " " + record.name;
            EXPECT_FALSE(record.name.empty()) << where;
            EXPECT_GE(record.width(), need.bytes) << where;
            EXPECT_EQ(record.refresh != 0, need.pace == Pace::Live) << where;
        }
    }
}

TEST(ShippedBoards, IdentityRecordsAreThereAndApartFromTheParameters) {
    for (std::size_t bank = 0; bank < std::size(identityFiles); ++bank) {
        std::set<std::uint32_t> taken{0};  // the port probe reads address 0 before any board is known
        for (const Record& record : parametersOf(static_cast<int>(bank))) {
            // Such a record is sent without end while its board is silent, and nothing else is read meanwhile.
            EXPECT_EQ(record.refresh & 2, 0) << record.name;
            for (int offset = 0; offset < record.width(); ++offset) {
                EXPECT_TRUE(taken.insert(record.address + static_cast<std::uint32_t>(offset)).second)
                    << parameterFiles[bank].stem << ' ' << record.number;
            }
        }
        const Table identity = shipped(identityFiles[bank]);
        ASSERT_EQ(identity.records.size(), 20U);
        for (const Record& record : identity.records) {
            EXPECT_TRUE(taken.insert(record.address).second) << identityFiles[bank].stem << ' ' << record.number;
            EXPECT_EQ(record.width(), 1) << "an identity is asked for as one byte";
        }
        for (const std::size_t number : {1U, 11U, 12U, 13U, 14U, 17U, 18U}) {
            EXPECT_FALSE(identity.records[number - 1].name.empty()) << identityFiles[bank].stem << ' ' << number;
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

}  // namespace
}  // namespace kestrel::mkindex
