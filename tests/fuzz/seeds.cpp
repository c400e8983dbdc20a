// The seeds. How each target takes its bytes apart is said in targets.h and targets.cpp.
#include "fuzz/seeds.h"

#include <string_view>

namespace kestrel::fuzz {

namespace {

std::string repeated(int times, std::string_view piece) {
    std::string all;
    for (int i = 0; i < times; ++i) all += piece;
    return all;
}

/// Silence of no length before each byte.
std::string atOnce(std::string_view frame) {
    std::string all;
    for (const char byte : frame) all.append(1, '\0').append(1, byte);
    return all;
}

}  // namespace

std::vector<Seed> seeds() {
    using namespace std::string_literals;
    const std::string read = atOnce("\x01\x34\x12\x00\x47"s);
    return {
        {"index", "identity of 21", "\x01"s + repeated(21, "Z\x11\x00\x00\x05"s)},
        {"index", "parameters",
         "\x03"s + repeated(3, "Z\x00\x00\x00\x01\x01\x02\x03\x04Z\x12\x03\x02\x05\x01\x02\x03\x04"s)},
        {"index", "odd commands", "\x04Z\x10\x7F\x00\x01\xFF\xFF\xFF\xFFZ\x10\xFF\x01\x02\xFF\xFF\xFF\xFF"s},
        {"index", "part of a record", "\x02Z!\x00\x00\x01Z!"s},
        {"language", "alike", "uno\r\n;--\r\ndue\r\n\xFFone\r\n;--\r\ntwo"},
        {"language", "unlike", ";--\n\n;--\xFF;--\nx\ny\x80\x9F"},
        {"language", "too long", repeated(801, "a\n") + "\xFF" + repeated(801, "b\n")},
        {"configuration", "both",
         "Com=1\r\nLingua=Italiano\r\n\xFF"
         "Com=2\r\nLingua=English\r\n"},
        {"configuration", "odd",
         "Com=12\n\nLingua=\n\xFF"
         "Com=9\r\nLin"},
        {"reply", "good", "\x09\x02\x05\x05\x0C\x03\xE8\x03\xEB\x0C\x05\x01\x02\x03\x04\x0A"s},
        {"reply", "bad, then late", "\x09" + repeated(5, "\x02\x05\x06\x01"s) + "\xFF\x03\x01\x01\x02\xC8\x01\x07"s},
        {"reply", "more than was asked for", "\x09\x28" + repeated(40, "\x07") + "\x01\x09\x00\x00\xFF\x01\x03\x03"s},
        {"frame", "read", read},
        {"frame", "routed write", atOnce("\xF2\x34\x12\x00\x80\x56\x64\x72"s)},
        {"frame", "heard after a silence", atOnce("\x01\x01\x01"s) + "\x3C\x01"s + read.substr(2)},
        {"options", "ports",
         "--com\n1=/dev/ttyUSB0\n--com=4=x\n--open=FrmDosi\n--theme\ndark\n--tour=x\n--directory\n/"},
        {"settings", "of three boards",
         "kestrel-settings 1\nprogram\tk\ndate\td\nmachine\t7\nboard\tmaster\tW0256AP03.inx\nboard\tsector\tx\n"
         "decimals\t2\ncomplete\tno\n# a remark\nmaster\tprice[3]\t0.70\t70\nmaster\tsale.options\t0x20\t32\n"
         "master\tprice_timeout\t6.0 s\t60\nsector\ttank.offset\t-5 \xC2\xB0"
         "C\t0\nsector\ttank.delta\t-\t-\nsum\t00000000\n"},
        {"options", "odd rates", "--demo\n--fault=port=1e-400,late=nan\n--version"},
    };
}

}  // namespace kestrel::fuzz
