// The numbers of the parameters whose meaning the simulated boards know, by board.
// Where they lie in a board's memory comes from the index files; only their meaning stands here.
#pragma once

namespace kestrel::simulator {

inline constexpr int selectionCount = 18;  // keys, plain and with preselection
inline constexpr int sectorCount = 48;     // six rows of eight

namespace master {
inline constexpr int hotDrinkPresence = 1;  // presence words: bit 2 says that the board is there
inline constexpr int sectorPresence = 2;
inline constexpr int decimals = 3;  // of money, bits 0 and 1
inline constexpr int command = 4;
inline constexpr int firstArgument = 5;
inline constexpr int secondArgument = 6;
inline constexpr int state = 7;     // bit 1 busy, bit 2 has a clock, bit 3 eight languages
inline constexpr int price = 16;    // thirty
inline constexpr int options = 84;  // bit 0: everything at price 1
inline constexpr int paymentSystem = 85;
inline constexpr int discount = 88;  // thirty
inline constexpr int revision = 158;
inline constexpr int lifetimeVends = 159;
inline constexpr int vends = 160;
inline constexpr int freeVends = 161;
inline constexpr int testVends = 162;
inline constexpr int lifetimeIncome = 163;
inline constexpr int income = 164;
inline constexpr int discounts = 165;
inline constexpr int overpay = 166;
inline constexpr int jugVends = 167;
inline constexpr int preselectedVends = 168;
inline constexpr int preselectionVends = 169;  // four
inline constexpr int coinCounter = 177;        // sixteen, the first eight of them for the coins below
inline constexpr int lastCoinCounter = 192;
inline constexpr int intoTubes = 193;
inline constexpr int outOfTubes = 195;
inline constexpr int fromKey = 198;
// Discount bands: minute and hour of a beginning, and four further on of its end.
inline constexpr int discountBand = 211;
inline constexpr int secondDiscountBand = 213;
inline constexpr int discountBandEnd = 4;
// The clock is set by the first group and read from the second; they are not in the same order.
inline constexpr int setHour = 239;
inline constexpr int setMinute = 240;
inline constexpr int setDay = 241;
inline constexpr int setMonth = 242;
inline constexpr int setYear = 243;
inline constexpr int minute = 244;
inline constexpr int hour = 245;
inline constexpr int day = 246;
inline constexpr int month = 247;
inline constexpr int year = 248;  // since 2000
inline constexpr int inputs = 249;
inline constexpr int newestAlarm = 251;
inline constexpr int alarms = 252;  // ten records of minute, hour, day, month, year, code
inline constexpr int alarmRecord = 6;
inline constexpr int alarmCount = 10;
inline constexpr int coinValue = 312;  // eight
inline constexpr int decimalsSetting = 359;
inline constexpr int powderTestTime = 370;  // tenths of a second
}  // namespace master

namespace hot_drink {
inline constexpr int command = 1;
inline constexpr int mailbox = 2;  // five bytes
inline constexpr int mailboxSize = 5;
inline constexpr int recipe = 7;             // 33 blocks of 32
inline constexpr int jugMask = 1087;         // masks: four bytes, a bit a selection
inline constexpr int coffeeInfusion = 1145;  // tenths of a second
inline constexpr int teaInfusion = 1146;
inline constexpr int priceNumber = 1163;     // eighteen, from 0
inline constexpr int boilerSetPoint = 1199;  // degrees
inline constexpr int vends = 1216;           // eighteen each
inline constexpr int freeVends = 1234;
inline constexpr int jugVends = 1252;
inline constexpr int testVends = 1270;
inline constexpr int boiler = 1288;     // degrees
inline constexpr int inputs = 1289;     // three bytes
inline constexpr int outputs = 1292;    // five bytes, as the board drives them
inline constexpr int testState = 1297;  // bit 0: in test mode
inline constexpr int freeMask = 1455;
}  // namespace hot_drink

namespace sector {
inline constexpr int priceNumber = 1;    // forty-eight, from 0
inline constexpr int tankSetPoint = 51;  // degrees; 16 and more is off
inline constexpr int tankOffset = 52;    // degrees, plus 5
inline constexpr int tankDelta = 53;     // tenths of a degree
inline constexpr int vends = 71;         // forty-eight each
inline constexpr int freeVends = 119;
inline constexpr int testVends = 167;
inline constexpr int command = 284;
inline constexpr int mailbox = 285;  // two bytes
inline constexpr int mailboxSize = 2;
inline constexpr int tank = 287;         // degrees in the high byte, signed; the low byte is the fraction
inline constexpr int outputGroup = 288;  // one of six, and bit 7 for the compressor
inline constexpr int outputBit = 289;    // one of eight
inline constexpr int testState = 290;    // bit 0: in test mode, bit 1: motors going to zero
}  // namespace sector

// Bits of several of the parameters above.
inline constexpr unsigned presentBit = 4;
inline constexpr unsigned busyBit = 2;
inline constexpr unsigned clockBit = 4;
inline constexpr unsigned eightLanguagesBit = 8;
inline constexpr unsigned allAtPriceOneBit = 1;
inline constexpr unsigned coinMechanismBit = 1;
inline constexpr unsigned mdbBit = 4;
inline constexpr unsigned inTestBit = 1;
inline constexpr unsigned zeroingBit = 2;

}  // namespace kestrel::simulator
