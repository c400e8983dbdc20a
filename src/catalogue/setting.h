// What the code calls a parameter of the machine: its board, its number, and the number of its copy.
// The numbers stand in data/catalogue alone; the build makes the constants of catalogue/parameters.h from it.
#pragma once

#include <stdexcept>

namespace kestrel {

/// In the order of the banks.
enum class Board { Master, HotDrink, Sector };

/// One parameter. The boards keep most settings twice: a change goes to the number and then to the copy. Two are the
/// same when board and number are.
struct Setting {
    static constexpr int NoCopy = 0;

    Board board;
    int number;
    int copy = NoCopy;

    friend constexpr bool operator==(const Setting& a, const Setting& b) {
        return a.board == b.board && a.number == b.number;
    }
};

/// Like parameters of one board that follow each other, as do their copies. Elements count from 0, as the rows of pages
/// do; an index outside is a mistake of the program, which ends with std::out_of_range.
class SettingRange {
  public:
    constexpr SettingRange(const Setting& only) : SettingRange(only, 1) {}
    constexpr SettingRange(const Setting& first, int size) : first_(first), size_(size) {}

    constexpr Board board() const { return first_.board; }
    constexpr int size() const { return size_; }
    constexpr Setting front() const { return (*this)[0]; }
    constexpr Setting back() const { return (*this)[size_ - 1]; }
    constexpr Setting operator[](int index) const {
        if (index < 0 || index >= size_) throw std::out_of_range("a parameter outside its range");
        return {first_.board, first_.number + index, hasCopies() ? first_.copy + index : Setting::NoCopy};
    }
    /// The first `count` of them, at least one.
    constexpr SettingRange first(int count) const {
        if (count < 1 || count > size_) throw std::out_of_range("more parameters than a range has");
        return {first_, count};
    }

    constexpr bool hasCopies() const { return first_.copy != Setting::NoCopy; }
    /// Which of them has the number, or -1.
    constexpr int indexOf(int number) const {
        const int index = number - first_.number;
        return index >= 0 && index < size_ ? index : -1;
    }

  private:
    Setting first_;
    int size_;
};

/// The copy, as a parameter of its own. Throws std::logic_error where there is none.
constexpr Setting CopyOf(const Setting& setting) {
    if (setting.copy == Setting::NoCopy) throw std::logic_error("a parameter without a copy");
    return {setting.board, setting.copy};
}
constexpr SettingRange CopyOf(const SettingRange& range) { return {CopyOf(range.front()), range.size()}; }

/// The parameter with another one that is written after it in place of its copy.
constexpr Setting WithCopy(const Setting& setting, const Setting& second) {
    if (second.board != setting.board) throw std::logic_error("a copy on another board");
    return {setting.board, setting.number, second.number};
}

}  // namespace kestrel
