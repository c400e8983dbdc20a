#!/usr/bin/env bash
# Tests the tests of the pages: plants one fault after another in a copy of a source of a page or of the simulated machine,
# and demands that a test finds each. Prints a table; ends with 1 if one was not found. FAULTS=WORD takes those with the word.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
work=$root/build/planted_pages
jobs=${JOBS:-2}
limit=120

# What goes wrong, the file under src, and the change of one line.
faults=(
    "captions stay in the old language@pages/common/table_page.cpp@s/::Form_Activate() { PageCaptions(); }/::Form_Activate() {}/"
    "a closed page stays subscribed@pages/common/table_page.cpp@s/{ ReleaseAll(lists_.releases); }/{}/"
    "a page of sales is not read again@pages/common/table_page.cpp@s/if (timer_) timer_->Enabled = true;/if (timer_) timer_->Enabled = false;/"
    "each reading subscribes once more@pages/common/table_page.cpp@/OnTimer/,/});/s/PageRelease();//"
    "a moved bar writes no copy@pages/common/table_page.cpp@s/WriteTwice(setting, static_cast<unsigned>(bar/ParamWrite(setting, static_cast<unsigned>(bar/"
    "a bar writes what the board says@pages/common/table_page.cpp@s/if (!Updating) WriteTwice(setting, static_cast/WriteTwice(setting, static_cast/"
    "a bar without decimals@pages/common/table_page.cpp@s/bar.scale.decimals = row.decimals;/bar.scale.decimals = 0;/"
    "all bars take steps of one@pages/common/table_page.cpp@s/row.max, row.largeStep)/row.max, 1)/"
    "rows without captions@pages/common/table_page.cpp@s/if (row.line != 0) this->caption/if (row.line < 0) this->caption/"
    "a count writes no copy@pages/common/table_page.cpp@s/WriteTwice(setting, RawOfBar/ParamWrite(setting, RawOfBar/"
    "a word that repeats unlocks@pages/common/table_page.cpp@s/if (std::exchange(last, word) == word) return;/last = word;/"
    "live without its board@pages/common/table_page.cpp@s/control->Enabled = SaysPresent(word)/control->Enabled = word != 0/"
    "pages without titles@pages/common/table_page.cpp@s/if (titleLine_ != 0)/if (titleLine_ < 0)/"
    "pages open one value early@pages/common/arrival_count.h@s/arrived_ < limit_/arrived_ + 1 < limit_/"
    "a command goes with half its mailbox@pages/common/mailbox.cpp@s/ranges::all_of/ranges::any_of/"
    "a command that was given up goes out@pages/common/mailbox.cpp@s/if (!mailbox_.empty() \&\& !commandWaits_) Withdraw/if (mailbox_.empty() \&\& !commandWaits_) Withdraw/"
    "what is withdrawn moves the scan@pages/common/mailbox.cpp@s/CurrentBank = before;/CurrentBank = before * 0;/"
    "the highest number is refused@pages/common/number_field.cpp@s/whole <= field.highest/whole < field.highest/"
    "numbers are not cut@pages/common/number_field.cpp@s/typed.substr(0, field.taken)/typed/"
    "numbers with a tail are taken@pages/common/number_field.cpp@s/if (!numberIn(typed) || !number)/if (!number)/"
    "an amount is typed without its offset@pages/common/offset_bar.cpp@s/bar.scale.offset = BarOffset/bar.scale.offset = 0/"
    "the last position has no name@pages/common/position_labels.cpp@s/p <= std::min/p < std::min/"

    "off times stand on on times@pages/beverage/frm_inter.cpp@s/IntermittenceOff\[i\], 1}, Label3/IntermittenceOn[i], 1}, Label3/"
    "a figure of a row is not locked@pages/beverage/frm_inter.cpp@s/    Label4s\[row\].Enabled = live;//"
    "an off time is not locked@pages/beverage/frm_inter.cpp@s/    HScroll5\[row\].Enabled = live;//"
    "a powder's switch writes as it is told@pages/beverage/frm_inter.cpp@s/    if (Updating) return;//"
    "powders open without their board@pages/beverage/frm_inter.cpp@s/if (!SaysPresent(LastStatus)) return;//"
    "a powder's switch shows another bit@pages/beverage/frm_inter.cpp@s/(EnableBits >> i) \& 1/(EnableBits >> (4 - i)) \& 1/"
    "a large step of the wrong length@pages/beverage/frm_inter.cpp@s/LargeStep = 3/LargeStep = 5/"
    "a time of plus ends early@pages/beverage/frm_presel.cpp@s/bar({0, 0, 255, LargeStep, PlusTime/bar({0, 0, 250, LargeStep, PlusTime/"
    "a type is written as a product@pages/beverage/frm_presel.cpp@s/writeSetting(Type\[Index\]/writeSetting(Product[Index]/"
    "types are not locked@pages/beverage/frm_presel.cpp@s/        iSwSliderX2\[i\].Enabled = live;//"
    "a type beyond the last@pages/beverage/frm_presel.cpp@s/static_cast<int>(std::min<ParamValue>(value, HighestType))/static_cast<int>(value)/"
    "a product that is gone stays on the board@pages/beverage/frm_presel.cpp@s/        iSwSliderX1_PositionChangeUser(i);//"
    "heads swapped@pages/beverage/frm_presel.cpp@s/{82, 83, 84, 85, 82, 83}/{82, 84, 83, 85, 82, 83}/"
    "types are named one off@pages/beverage/frm_presel.cpp@s/FirstTypeLine = 87/FirstTypeLine = 88/"
    "a caption of another time@pages/beverage/frm_tempi.cpp@s/{96, 0, 255/{97, 0, 255/"
    "a copy written that is left as it is@pages/beverage/frm_tempi.cpp@s/WithCopy(hot_drink::TimeBitterness, hot_drink::TimeBitterness)/hot_drink::TimeBitterness/"
    "water goes on too long@pages/beverage/frm_tempi.cpp@s/{101, 0, 60,/{101, 0, 255,/"
    "a row follows the other board@pages/beverage/frm_tempi.cpp@s/row.setting.board == Board::Sector ?/row.setting.board != Board::Sector ?/"
    "a powder's time of another step@pages/beverage/recipe.cpp@s/{hot_drink::Step1Powder2Time, hot_drink::Step2Powder2Time/{hot_drink::Step1Powder2Time, hot_drink::Step3Powder2Time/"
    "a bit of a selection without its copy@pages/beverage/recipe.cpp@s/WriteTwice(row.bytes\[byte\], stored)/ParamWrite(row.bytes[byte], stored)/"
    "cups of the last selections are not written@pages/beverage/recipe.cpp@s/{hot_drink::MaskCup, 29}/{hot_drink::MaskCup, 9}/"
    "the number of jugs is not read@pages/beverage/recipe.cpp@s/subscribe(hot_drink::JugPortions\[selection\]);//"
    "times of a beverage end early@pages/beverage/frm_dosi.cpp@s/\[field\].design(0, 255, TimeLargeStep)/[field].design(0, 250, TimeLargeStep)/"
    "times in large steps of five@pages/beverage/frm_dosi.cpp@s/TimeLargeStep = 10/TimeLargeStep = 5/"
    "valves in large steps of one@pages/beverage/frm_dosi.cpp@s/ValveLargeStep = 3/ValveLargeStep = 1/"
    "no valve 12 before the number is known@pages/beverage/frm_dosi.cpp@s/FirstValveDesignMax = 12/FirstValveDesignMax = 11/"
    "jugs end at ninety@pages/beverage/frm_dosi.cpp@s/design(1, 99, 10)/design(1, 90, 10)/"
    "the selector takes the wrong step@pages/beverage/frm_dosi.cpp@s/RecipeSelections - 1, 3)/RecipeSelections - 1, 1)/"
    "both full tests are named alike@pages/beverage/frm_dosi.cpp@s/FullTestLines = {117, 119}/FullTestLines = {119, 119}/"
    "cold is named as on@pages/beverage/frm_dosi.cpp@s/LanguageTable(ColdLine)/LanguageTable(OnLine)/"
    "a moved valve does not open@pages/beverage/frm_dosi.cpp@s/if (Index == ValveField) EventEdited = true;//"
    "jugs are written behind a brewer@pages/beverage/frm_dosi.cpp@s/if (dropsMoves_) return HScroll5.putBack(.*//"
    "the number of jugs stays locked@pages/beverage/frm_dosi.cpp@s/if (Index == JugMask) HScroll5.Enabled = on;//"
    "tests of the second step stay open@pages/beverage/frm_dosi_locks.cpp@s/    enable(Command2, false);//"
    "figures of a brewer stay open@pages/beverage/frm_dosi_locks.cpp@s/    enableFields(Label1, ValveTimeField + 1, false);//"
    "cold can be set without a cooling unit@pages/beverage/frm_dosi_locks.cpp@s/if (ColdMode != 0) SwitchX5/SwitchX5/"
    "the page opens in a test@pages/beverage/frm_dosi_locks.cpp@s/if (PendingCommand != 0) return;//"
    "steps go with another kind of cooling@pages/beverage/frm_dosi_locks.cpp@s/ColdModeWithoutSteps = 3/ColdModeWithoutSteps = 2/"
    "the powder test leaves no mark@pages/beverage/frm_dosi_test_dispensing.cpp@s/    PowderTestActive = true;//"
    "water alone runs the powders@pages/beverage/frm_dosi_test_dispensing.cpp@s/FullTests = {26, 2}/FullTests = {2, 2}/"
    "another solenoid is tested@pages/beverage/frm_dosi_test_dispensing.cpp@s/number \* PowderSolenoids + Index)/Index * PowderSolenoids + number)/"
    "a test without a time locks for a second@pages/beverage/frm_dosi_test_dispensing.cpp@s/NoPowderMs = 100/NoPowderMs = 1000/"
    "a vend of before ends the test@pages/beverage/frm_dosi_test_dispensing.cpp@/::Command4_Click/,/^}/s/    MachineBusySeen = false;//"
    "a selection opens one value early@pages/beverage/frm_dosi_values.cpp@s/ArrivalLimit = 59/ArrivalLimit = 58/"
    "one brewer too few@pages/beverage/frm_dosi_values.cpp@s/Max = highest + 2/Max = highest + 1/"
    "free selections count as read@pages/beverage/frm_dosi_values.cpp@s/if (place.mask != FreeMask) count();/count();/"
    "delays end one revision early@pages/beverage/frm_pro_uni.cpp@s/FirstRevisionWithoutDelays = 27/FirstRevisionWithoutDelays = 26/"
    "a time writes as it is told@pages/beverage/frm_pro_uni.cpp@/HScroll_Change(int product/,/^}/s/if (Updating) return;//"
    "a moved channel locks nothing@pages/beverage/frm_pro_uni.cpp@/PositionChangeUser(int product)/,/^}/s/LockProducts();//"
    "captions of a time stay live@pages/beverage/frm_pro_uni.cpp@s/    product.captions\[row\].Enabled = live;//"
    "delays are captioned as times@pages/beverage/frm_pro_uni.cpp@s/FirstTimeLine + row/FirstTimeLine + row * 0/"
    "the delays' switch is another bit@pages/beverage/frm_pro_uni.cpp@s/DelaysBit = 16/DelaysBit = 8/"

    "the tank without its correction@pages/climate/frm_grafico.cpp@s/OffsetZero = 5/OffsetZero = 0/"
    "samples at the wrong times@pages/climate/frm_grafico.cpp@s/SampleInterval = 4000/SampleInterval = 1000/"
    "the tank is drawn without its board@pages/climate/frm_grafico.cpp@s/if (SaysPresent(Param2)) iStrip/iStrip/"
    "both curves have one name@pages/climate/frm_grafico.cpp@s/BoilerLine = 320/BoilerLine = 321/"
    "bands end an hour with another's minutes@pages/climate/frm_orologio.cpp@s/master::BandOn1EndHour, master::BandOn1EndMinute/master::BandOn1EndHour, master::BandOn2EndMinute/"
    "a year of 31 months@pages/climate/frm_orologio.cpp@s/{\"mese\", 1, 12/{\"mese\", 1, 31/"
    "captions of the date stay live@pages/climate/frm_orologio.cpp@s/        Label5s\[i\].Enabled = live;//"
    "the clock is set for ever@pages/climate/frm_orologio.cpp@s/    Editing = false;//"
    "the clock moves what the user sets@pages/climate/frm_orologio.cpp@s/    if (!FirstDate) return;//"
    "a band writes no copy@pages/climate/frm_orologio.cpp@s/WriteTwice(bandSetting/ParamWrite(bandSetting/"
    "day 32@pages/climate/frm_orologio.cpp@s/number > 31 ? DayInstead/number > 32 ? DayInstead/"
    "defrosting never@pages/climate/frm_temperatura.cpp@s/{314, 1, 12/{314, 0, 12/"
    "the tank off one degree late@pages/climate/frm_temperatura.cpp@s/TankOff = 16/TankOff = 17/"
    "another cooling unit's refrigerator@pages/climate/frm_temperatura.cpp@s/RefrigeratorFitted = 1/RefrigeratorFitted = 2/"
    "the boiler's second value goes elsewhere@pages/climate/frm_temperatura.cpp@s/Step3MixerTime\[17\]/Step3MixerTime[16]/"
    "a difference ten times as large@pages/climate/frm_temperatura.cpp@s/sector::TankDelta, 1}/sector::TankDelta, 0}/"
    "a frame that no board locks@pages/climate/frm_temperatura.cpp@s/    liveWith(master::SectorPresence, {&Frame2});//"
    "the correction is typed without its offset@pages/climate/frm_temperatura.cpp@s/    HScroll2\[TankOffsetRow\].scale.offset = -OffsetZero;//"

    "a lamp of the master is dark@pages/diagnostics/frm_in_out.cpp@s/{master::Inputs, 3, 5, 1}/{master::Inputs, 3, 4, 1}/"
    "the master's word is left@pages/diagnostics/frm_in_out.cpp@s/    ParamWrite(master::TestPageWord, PageIsClosed);//"
    "an order outlives its wait@pages/diagnostics/frm_in_out.cpp@s/    if (switchOrdered_) withdrawOrders();//"
    "start stays live@pages/diagnostics/frm_in_out.cpp@/::Command1_Click/,/^}/s/    Command1.Enabled = false;//"
    "a column of lamps is left out@pages/diagnostics/frm_in_out_face.cpp@s/        inputs.emplace_back(iLedRectangleX1.*//"
    "a column of switches is left out@pages/diagnostics/frm_in_out_face.cpp@s/for (int first = 0; first < HotDrinkOutputs/for (int first = OutputRows; first < HotDrinkOutputs/"
    "lamps of the master have no names@pages/diagnostics/frm_in_out_face.cpp@s/        LedX1\[i\].namedBy(&Label1\[i\]);//"
    "lamps of the inputs have no names@pages/diagnostics/frm_in_out_face.cpp@s/        iLedRectangleX1\[.*namedBy.*//"
    "an input's lamp has another's name@pages/diagnostics/frm_in_out_face.cpp@s/11, 12, 14, 17}/11, 12, 13, 17}/"
    "switches of sectors have no names@pages/diagnostics/frm_in_out_face.cpp@s/ SwitchLed3\[i\].namedBy(&Label5\[i\]);/ (void)i;/"
    "the compressor has no name@pages/diagnostics/frm_in_out_face.cpp@s/    SwitchLed4.namedBy(&Label2);//"
    "a running test in red@pages/diagnostics/frm_in_out_face.cpp@s/TestActive ? Green : Red/TestActive ? Red : Green/"
    "the boiler's caption stays live@pages/diagnostics/frm_in_out_hot_drink.cpp@s/    Label6.Enabled = live;//"
    "an input on its neighbour's lamp@pages/diagnostics/frm_in_out_hot_drink.cpp@s/{hot_drink::Inputs\[0\], 3, 1, 14}/{hot_drink::Inputs[0], 3, 1, 13}/"
    "a switch moves before its output@pages/diagnostics/frm_in_out_hot_drink.cpp@s/    SwitchLed1\[Index\].Active = !wanted;//"
    "the other board falls out of test@pages/diagnostics/frm_in_out_hot_drink.cpp@s/    rearmSector();//"
    "the compressor's caption stays live@pages/diagnostics/frm_in_out_sector.cpp@s/    Label2.Enabled = live;//"
    "half a pair unlocks@pages/diagnostics/frm_in_out_sector.cpp@s/bitByte == CedarBit \&\& CedarGroupNew == CedarGroup/bitByte == CedarBit/"
    "a cold tank is hot@pages/diagnostics/frm_in_out_sector.cpp@s/SignFrom = 128/SignFrom = 129/"
    "a device on another's lamp@pages/diagnostics/frm_schema.cpp@s/{hot_drink::Inputs\[1\], 2, 1, 9}/{hot_drink::Inputs[1], 3, 1, 9}/"
    "devices named one off@pages/diagnostics/frm_schema.cpp@s/OutputLine = 415/OutputLine = 416/"
    "the legend one off@pages/diagnostics/frm_schema.cpp@s/LegendLine = 448/LegendLine = 449/"
    "gauges named by another device@pages/diagnostics/frm_schema.cpp@s/constexpr int Boiler = 6;/constexpr int Boiler = 5;/"
    "the last code has no text@pages/diagnostics/frm_allarmi.cpp@s/HighestCode = 137/HighestCode = 136/"
    "the ring turns one slot early@pages/diagnostics/frm_allarmi.cpp@s/slot == 0 ? Slots - 1/slot == 0 ? Slots - 2/"
    "the list has no name@pages/diagnostics/frm_allarmi.cpp@s/    ListView1.namedBy(&Label1);//"
    "an hour too many@pages/diagnostics/frm_allarmi.cpp@s/hours > 23/hours > 24/"
    "another pair is run@pages/diagnostics/frm_test_cedar.cpp@s/FirstFactor = 16/FirstFactor = 8/"
    "a pair that never starts locks for ever@pages/diagnostics/frm_test_cedar.cpp@s/    Timer1.Enabled = true;//"
    "the motors' way to zero never ends@pages/diagnostics/frm_test_cedar.cpp@s/        ZeroRunning = true;/        ;/"
    "a closed page leaves its order@pages/diagnostics/frm_test_cedar.cpp@/::Form_Unload/,/^}/s/giveUp();//"

    "captions of service one off@pages/machine/frm_azione.cpp@s/FirstCaption = 203/FirstCaption = 204/"
    "two filters swapped@pages/machine/frm_azione.cpp@s/hot_drink::ServiceFilter1,  hot_drink::ServiceFilter2/hot_drink::ServiceFilter2,  hot_drink::ServiceFilter1/"
    "powders of a valve write as they are told@pages/machine/frm_con_mac.cpp@/::ValveBar_Change/,/^}/s/Updating || //"
    "a refused move locks for ever@pages/machine/frm_con_mac.cpp@s/        EnableControls();//"
    "a page that opens live@pages/machine/frm_con_mac.cpp@/::Form_Load/,/^}/s/    DisableAllControls();//"
    "a valve's mixer writes no copy@pages/machine/frm_con_mac.cpp@s/writeBoth(hot_drink::ValveMixer\[Index\], /ParamWrite(hot_drink::ValveMixer[Index], (unsigned)/"
    "the first set one value short@pages/machine/frm_con_mac_values.cpp@s/FullSet = 31/FullSet = 30/"
    "figures of powders stay live@pages/machine/frm_con_mac_values.cpp@s/    Label8s\[powder\].Enabled = live;//"
    "a limit writes what it moves@pages/machine/frm_con_mac_values.cpp@/limitPowderBars() {/,/^}/s/const ByThePage moves(\*this);//"
    "cold pairing without its cooling unit@pages/machine/frm_con_mac_values.cpp@s/        DisableColdPairing();/        return false;/"
    "a valve's second powder is its third@pages/machine/frm_con_mac_tables.h@s/{60, hot_drink::ValvePowder2/{60, hot_drink::ValvePowder3/"
    "a mixer too many@pages/machine/frm_con_mac_tables.h@s/{55, hot_drink::MachineMixers, 3}/{55, hot_drink::MachineMixers, 4}/"
    "an option has another's caption@pages/machine/frm_opzioni_tables.h@s/{3, 265, /{3, 264, /"
    "an option is another bit@pages/machine/frm_opzioni_tables.h@s/{14, 274, SectorByte, 0}/{14, 274, SectorByte, 4}/"
    "overpay waits too long@pages/machine/frm_opzioni_tables.h@s/{285, 180, /{285, 255, /"
    "a location has four digits@pages/machine/frm_opzioni_tables.h@s/{master::MachineLocation, 5, 65535}/{master::MachineLocation, 4, 9999}/"
    "decimals are written as they are shown@pages/machine/frm_opzioni.cpp@s/(SlswitchX2, master::MoneyDecimalsSetting)/(SlswitchX2, master::MoneyDecimals)/"
    "options open one value early@pages/machine/frm_opzioni_values.cpp@s/MoreThan = 20/MoreThan = 19/"
    "an option of the master stays live@pages/machine/frm_opzioni_values.cpp@s/{9, 10, 11, 12}/{9, 10, 11}/"
    "an option of the machine stays live@pages/machine/frm_opzioni_values.cpp@s/{0, 1, 2, 3, 4, 5, 13}/{0, 1, 2, 3, 4, 5}/"
    "figures of the bars stay live@pages/machine/frm_opzioni_values.cpp@s/        Label10\[i\].Enabled = live;//"
    "a caption of the master stays live@pages/machine/frm_opzioni_values.cpp@s/&SlswitchX1, &Label9, &SlswitchX5/\&SlswitchX1, \&SlswitchX5/"
    "a language that is gone comes back@pages/machine/frm_opzioni_values.cpp@s/if (LanguageIndex > SlswitchX1.top()) LanguageIndex = 0;//"
    "a sales code of four digits@pages/machine/frm_password.cpp@s/{306, {master::CodeSales, 5, 99999}}/{306, {master::CodeSales, 4, 9999}}/"
    "codes are sent once@pages/machine/frm_password.cpp@s/WriteTwice(row.field.setting/ParamWrite(row.field.setting/"

    "captions of coins stay live@pages/payment/frm_pagamento.cpp@s/&Label10\[row\], &Label1\[row\]}, open/\&Label10[row]}, open/"
    "the coins' frame stays locked@pages/payment/frm_pagamento.cpp@/::setCoinFrame/,/^}/s/    Frame1.Enabled = open;//"
    "a frame of MDB stays live@pages/payment/frm_pagamento.cpp@s/&Frame3, &Frame6, &Frame5, &Label2/\&Frame3, \&Frame5, \&Label2/"
    "a caption of MDB stays live@pages/payment/frm_pagamento.cpp@s/&Label2, &Label12, &Label5/\&Label2, \&Label5/"
    "a change of MDB stays live@pages/payment/frm_pagamento.cpp@s/{&Label4\[0\], &Label11\[0\], &HScroll11\[0\]}/{\&Label4[0], \&Label11[0]}/"
    "a switch of MDB stays live@pages/payment/frm_pagamento.cpp@s/&iSwitchSliderX2, &SliderX4, &SliderX6}/\&iSwitchSliderX2, \&SliderX6}/"
    "tokens stay live@pages/payment/frm_pagamento.cpp@s/&Label6s\[i\], &HScroll6\[i\], &Label3/\&Label6s[i], \&Label3/"
    "exact change stays live@pages/payment/frm_pagamento.cpp@s/    setEnabled({&Label3\[3\], &SwitchX5\[1\]}, open);//"
    "a credit's caption stays live@pages/payment/frm_pagamento.cpp@s/{&Label4\[row\], &Label11\[row\], &HScroll11\[row\]}, open/{\&Label11[row], \&HScroll11[row]}, open/"
    "the time-out's caption stays live@pages/payment/frm_pagamento.cpp@s/{&Label8, &Label8v, &scrTP}/{\&Label8v, \&scrTP}/"
    "change at once stays live@pages/payment/frm_pagamento.cpp@/::DisableExecutiveFrame/,/^}/s/&Label13, &SwitchX5\[0\]}/\&Label13}/"
    "a time-out outlives its system@pages/payment/frm_pagamento.cpp@/::DisableExecutiveFrame/,/^}/s/    setTimeoutRow(false);//"
    "credits lock on old boards@pages/payment/frm_pagamento.cpp@s/LastRevisionWithFreeCredits = 23/LastRevisionWithFreeCredits = 22/"
    "coin seven stays locked@pages/payment/frm_pagamento.cpp@s/SeventhCoin = 6/SeventhCoin = 7/"
    "a coin's mask takes the banknotes@pages/payment/frm_pagamento.cpp@s/WriteTwice(master::CoinMask, /WriteTwice(master::BanknoteMask, /"
    "two kinds of change@pages/payment/frm_pagamento.cpp@s/WriteTwice(master::ChangeOptions, /WriteTwice(master::ExactChangeOptions, /"
    "the executive keeps both bits@pages/payment/frm_pagamento.cpp@s/    paymentOptions_ = WithBits(paymentOptions_, .*//"
    "the two credits change places@pages/payment/frm_pagamento_layout.cpp@s/{Label4\[2\].Caption, 171}, {Label4\[3\].Caption, 170}/{Label4[2].Caption, 170}, {Label4[3].Caption, 171}/"
    "a time-out below two seconds@pages/payment/frm_pagamento_layout.cpp@s/scrTP.design(20,/scrTP.design(10,/"
    "the executive's names change places@pages/payment/frm_pagamento_layout.cpp@s/LanguageTable(153) + \",\" + LanguageTable(154)/LanguageTable(154) + \",\" + LanguageTable(153)/"
    "amounts shown before their decimals@pages/payment/amount_rows.cpp@s/if (i < 0 || !ParamIsFresh(master::MoneyDecimals)) continue;/if (i < 0) continue;/"
    "amounts keep the old decimals@pages/payment/amount_rows.cpp@s/bar(run.firstRow + i).scale.decimals = decimals;/bar(run.firstRow + i).scale.decimals = 2;/"
    "an amount without its copy@pages/payment/amount_rows.cpp@s/WriteTwice(run.amounts/ParamWrite(run.amounts/"
    "prices of plus on those without@pages/payment/frm_prezzi.cpp@s/AmountRun{30, master::PreselectionPrice}/AmountRun{30, master::PreselectionPlusPrice}/"
    "prices open before all are read@pages/payment/frm_prezzi.cpp@s/if (AllAreFresh(master::Price)) Enable/Enable/"
    "prices keep the former decimals@pages/payment/frm_prezzi.cpp@s/        amounts_.redraw(decimals_);//"
    "discounts open before the decimals@pages/payment/frm_sconti.cpp@s/ \&\& ParamIsFresh(master::MoneyDecimals)) Enable/) Enable/"
    "a discount writes as it is told@pages/payment/frm_sconti.cpp@s/    if (!Updating) amounts_/    amounts_/"
    "prices of selections one off@pages/payment/price_assignment.cpp@s/Value - LowestPrice)/Value.get())/"
    "selections open four rows early@pages/payment/price_assignment.cpp@s/rowsToOpen = 14/rowsToOpen = 10/"
    "sectors open at one price@pages/payment/price_assignment.cpp@/FrmAssSet = /,/;/s/gateIsDeaf = true/gateIsDeaf = false/"

    "the second button is given back@pages/sales/frm_cancella.cpp@s/cmdCancella\[0\].Enabled = true/cmdCancella[1].Enabled = true/"
    "permanent data for an old board@pages/sales/frm_cancella.cpp@s/FirstRevisionOfSecond = 26/FirstRevisionOfSecond = 25/"
    "the wrong data is cleared@pages/sales/frm_cancella.cpp@s/{{257, 1}, {259, 7}}/{{257, 7}, {259, 1}}/"
    "an amount is left@pages/sales/frm_mdb_audit.cpp@s/int i = 0; i < Amounts; ++i) ParamWrite/int i = 1; i < Amounts; ++i) ParamWrite/"
    "the button stays live@pages/sales/frm_mdb_audit.cpp@s/        Command1.Enabled = false;//"
    "takings as a count@pages/sales/frm_totali.cpp@s/{master::TotalTakings, true, 0, 212, Kind::Money}/{master::TotalTakings, true, 0, 212, Kind::Count}/"
    "jugs for tests@pages/sales/frm_totali.cpp@s/{master::TotalJugs, true, 5, 217/{master::TotalTests, true, 5, 217/"
    "totals keep the former decimals@pages/sales/frm_totali.cpp@s/DecimalsOf(value)); });/0 * DecimalsOf(value)); });/"
    "sectors run down@pages/sales/vend_counter_tables.cpp@s/all.size(), SectorColumns, true/all.size(), SectorColumns, false/"
    "a coin more than is counted@pages/sales/vend_counter_tables.cpp@s/\.shown = master::CoinCount.first(9)/.shown = master::CoinCount.first(8)/"
    "free vends for tests@pages/sales/vend_counter_tables.cpp@s/sectors(sector::SectorTests, /sectors(sector::SectorFree, /"
    "sectors numbered through@pages/sales/vend_counters.cpp@s/return text + \" \" + RowAndColumn(row)/return text + \" \" + std::to_string(row)/"

    "a test that counts no vend@simulator/dispensing.cpp@s/^            world_.add(hot_drink::SelectionTests\[selection\], 1);//"
    "the machine does not go idle@simulator/dispensing.cpp@/::finish() {/,/^}/s/    world_.setBit(master::MachineState, busyBit, false);//"
    "permanent totals stay@simulator/clearing.cpp@s/    *world.set(master::LifetimeTakings, 0);//"
    "a tank without its correction@simulator/climate.cpp@s/tankSetPoint(world) - correction(world)/tankSetPoint(world)/"
    "the set clock does not move@simulator/clock.cpp@s/        world_.set(part.shown, value);//"
    "outputs stay behind a test@simulator/test_modes.cpp@/::stop(/,/^}/s/    setOutputs(board, {});//"
    "several outputs at once@simulator/test_modes.cpp@s/group == 0 ? 0 : lowestBit(world_.get(sector::CommandArgument\[1\]))/group == 0 ? 0 : world_.get(sector::CommandArgument[1])/"
    "motors that never reach zero@simulator/test_modes.cpp@s/        if (mine == zeroing_) world_.setBit(sector::TestState, zeroingBit, false);/        (void)mine;/"
)

release=$root/build/release
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
linker=()
if command -v ld.lld >/dev/null; then linker=(-fuse-ld=lld); fi
cmake --preset release "${launcher[@]}" >/dev/null
cmake --build --preset release --target kestrel_core_tests >/dev/null
rm -rf "$work" && mkdir -p "$work"
ninja -C "$release" -t commands kestrel_core_tests >"$work/commands"

# suites FOLDER...: a filter for the tests that stand there.
suites() {
    sed -nE 's/^TEST(_[FP])?\(([A-Za-z]+), .*/*\2.*/p' $(git ls-files "$@") | sort -u | paste -sd:
}
ofPages=$(suites 'tests/pages/*.cpp')
ofMachine=$ofPages:$(suites 'tests/simulator/*.cpp')

# sources FILE: what is compiled anew when the file changes.
sources() {
    case $1 in
        *.h) grep -lF "\"${1#src/}\"" $(git ls-files 'src/pages/*.cpp' 'src/pages/*.h') | sed 's/\.h$/.cpp/' | sort -u ;;
        *) echo "$1" ;;
    esac
}

# build HERE FILE: compiles what the changed copy of the file belongs to and links the tests with it. The last of all
# commands says how that is done; an object in front of the library takes the place of the one in it.
build() {
    local here=$1 source object command link objects=()
    for source in $(sources "$2"); do
        object=$here/$(basename "$source" .cpp).o
        command=$(grep -F -- "-c $root/$source" "$work/commands")
        if [ "$source" = "$2" ]; then command=${command//"-c $root/$source"/"-c $here/$source"}; fi
        command=$(sed -E "s| -I| -I$here/src -I|; s| -Werror | |; s| -o [^ ]+| -o $object|; s| -MF [^ ]+| -MF $object.d|" <<<"$command")
        (cd "$release" && eval "$command")
        objects+=("$object")
    done
    link=$(tail -n 1 "$work/commands" | sed -E "s| -o tests/[^ ]+| ${linker[*]} ${objects[*]} -o $here/planted|; s|&& cd .*||")
    (cd "$release" && eval "$link")
}

# plant NUMBER: leaves the tests that found the fault, one a line.
plant() {
    local what file change here=$work/$1 filter=$ofPages fast=--gtest_fail_fast
    IFS=@ read -r what file change <<<"${faults[$1]}"
    mkdir -p "$here/src/$(dirname "$file")"
    sed "$change" "src/$file" >"$here/src/$file"
    local changed
    changed=$(diff "src/$file" "$here/src/$file" | grep -c '^>' || true)
    if [ "$changed" -ne 1 ] || ! build "$here" "src/$file" >"$here/log" 2>&1; then
        echo "planted_faults.sh: \"$what\" changes $changed lines of $file, or does not build" >&2
        return 1
    fi
    case $file in simulator/*) filter=$ofMachine ;; esac
    if [ -n "${ALL:-}" ]; then fast=; fi
    if ! timeout "$limit" "$here/planted" --gtest_filter="$filter" $fast >"$here/log" 2>&1; then
        sed -nE 's/^\[  FAILED  \] ([A-Za-z0-9_./]+).* \(.*ms\)$/\1/p' "$here/log" >"$here/found"
        if [ ! -s "$here/found" ]; then echo "(stopped)" >"$here/found"; fi
    fi
    rm -f "$here/planted"
}

numbers=()
for i in "${!faults[@]}"; do
    if [[ ${faults[$i]} == *${FAULTS:-}* ]]; then numbers+=("$i"); fi
done
for i in "${numbers[@]}"; do
    while [ "$(jobs -rp | wc -l)" -ge "$jobs" ]; do wait -n || true; done
    plant "$i" &
done
wait

# ALL=1 lists every test that found a fault, which tells what a test is worth.
missed=0
printf '%-44s %-44s %s\n' 'fault' 'file' 'found by'
for i in "${numbers[@]}"; do
    IFS=@ read -r what file change <<<"${faults[$i]}"
    found=NOT\ FOUND
    if [ -s "$work/$i/found" ]; then found=$(paste -sd' ' "$work/$i/found"); else missed=$((missed + 1)); fi
    printf '%-44s %-44s %s\n' "$what" "$file" "$found"
done
echo "$((${#numbers[@]} - missed)) of ${#numbers[@]} found"
[ "$missed" -eq 0 ]
