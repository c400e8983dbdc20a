// What counts as a number in a text box, and which whole number it is.
// The board's own value stands in wherever the typing cannot be taken.
#include "pages/common/number_field.h"

#include <gtest/gtest.h>

#include "support/bare_mirror.h"

namespace kestrel::testing {
namespace {

constexpr NumberField Field = {{Board::Master, 356}, 5, 65535};
constexpr std::uint32_t BoardsOwn = 777;

TEST(NumberField, TakesTheFirstCharactersOfANumberAndTheBoardsOwnWhereThatIsTooLarge) {
    BareMirror mirror;
    mirror.arrive(0, Field.setting.number, BoardsOwn);
    constexpr auto refused = std::optional<std::uint32_t>();
    const struct {
        const char* separator;
        const char* typed;
        std::optional<std::uint32_t> value;
    } cases[] = {
        {".", "65535", 65535},    {".", "65536", BoardsOwn},
        {".", "+42", 42},         {".", "0042", 42},
        {".", "12.5", 12},        {".", "13.5", 14},
        {".", "7.", 7},           {".", ".7", 1},
        {".", "-0.4", 0},         {".", "-1", BoardsOwn},
        {".", "1.2345678", 1},    {",", "13,5", 14},
        {",", "13.5", refused},   {".", "13,5", refused},
        {".", "1.2.3", refused},  {".", "", refused},
        {".", "   ", refused},    {".", ".", refused},
        {".", "-", refused},      {".", "--1", refused},
        {".", "1e3", refused},    {".", "nan", refused},
        {".", "0x10", refused},   {".", "1 2", refused},
        {".", "    -1", refused}, {".", "999999999999999999999999999999999999999999", BoardsOwn},
        {".", "000001", 0},
    };
    for (const auto& c : cases) {
        mirror.platform.separator = c.separator;
        TextBox box;
        box.Text = c.typed;
        EXPECT_EQ(CommitNumber(box, Field), c.value) << "\"" << c.typed << "\"";
        EXPECT_EQ(box.Text.get(), std::to_string(c.value.value_or(BoardsOwn))) << "\"" << c.typed << "\"";
    }
}

}  // namespace
}  // namespace kestrel::testing
