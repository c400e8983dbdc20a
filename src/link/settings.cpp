// The mirror by the names of the catalogue.
#include "link/settings.h"

namespace kestrel {

bool AllAreFresh(const SettingRange& range) {
    for (int i = 0; i < range.size(); ++i)
        if (!ParamIsFresh(range[i])) return false;
    return true;
}

void ParamWrite(const Setting& setting, std::uint32_t value) {
    CurrentBank = BankOf(setting.board);
    ParamWrite(setting.number, value);
}

void WriteTwice(const Setting& setting, std::uint32_t value) {
    ParamWrite(setting, value);
    ParamWrite(CopyOf(setting), value);
}

}  // namespace kestrel
