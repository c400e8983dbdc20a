// What a technician reads on every page, in English: a caption of the wrong row names a setting that it does not
// change. Texts that no language file has stay in Italian, as they were drawn.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <sstream>

#include "language/language_files.h"
#include "pages/payment/frm_prezzi.h"
#include "platform/displays.h"
#include "platform/names_on_page.h"
#include "program_version.h"
#include "shell/main_window.h"
#include "shell/search.h"
#include "support/layouts.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

/// The title, then texts in reading order with others between them.
const std::pair<const char*, std::string> Texts[] = {
    {"FrmConMac",
     "Machine configuration|Number of valves|Number of mixers|Number of powders|Sugar canister number|0,1,2,3,4,5|"
     "Pairing of cold valves|abbinamento ev. freddo 1 elettrovalvola|abbinamento ev. freddo 3 elettrovalvola|"
     "abbinamento ev. freddo 4 elettrovalvola|Valves|1st powder\nfor valve|2nd powder\nfor valve|3rd powder\nfor valve|"
     "Valve drip\ntime (s)|Mixer for valve 1|0,1,2,3|Mixer for valve 4|Double-product powder"},
    {"FrmInter",
     "Intermittent dosing|Powder|Enable|intermittent dosing|On time (s)|intermittent dosing|Off time (s)|"
     "intermittent dosing|1|Off,On|5|Off,On"},
    {"FrmProUni",
     "Single products|Single product 1 |0,1,2,3,4,5|Time, single product 1 (s)|Delay, single product 1 (s)|"
     "Single product 3 |Time, single product 3 (s)|Delay, single product 3 (s)|Enable delay|Off,On"},
    {"FrmPresel", "Preselections|Preselection|Product|Type|Time (s)|1|2|3|4|Preselection|Time (s)|1 Plus|4 Plus"},
    {"FrmTempi",
     "Times|Alder times (s)|Coffee brew water|Tea brew water|Coffee brew time|Tea brew time|No-sugar compensation|"
     "Pump run time|Water top-up|Cedar times (s)|Motor timeout"},
    {"FrmDosi",
     "Doses|+9|9|Selection 1|Test running|Water-only test|Full test|Step 1 (times in s)|Valve|Valve delay|Valve time|"
     "Mixer delay|Mixer time|1st powder delay|1st powder time|Test|2nd powder time|Test|3rd powder delay|"
     "3rd powder time|Test|Step 2 (times in s)|Step 3 (times in s)|3rd powder time|Test|Include selection|Off,On|"
     "bevanda gratis ?|Include cup|Cold beverage|Include jug|Jug count"},
    {"FrmPagamento",
     "Payment system|MDB|Coin management|Maximum change|Coin changer|Off,On|Ignore exact change|No, Si|Select coin|"
     "Coin enabled|Off,On|Banknote management|Select banknote|Banknote enabled|Tokens|Token 1|Token 3|"
     "Give change on tokens|Key top-up with tokens|Exact change and tokens|Off,On|G13|Coin 1|Coin 8|Executive|"
     "Normal,Differentiated ECS,Price holding|Price timeout (s)|Change at once|No, Si|Credit limits|"
     "Maximum key credit|Maximum coin credit"},
    {"FrmPrezzi",
     "Set prices|Price 1|Price 30|Preselection 1|Presel. 1 Plus|Preselection 4|Presel. 4 Plus|All at price 1|Off, On"},
    {"FrmSconti", "Set discounts|Discount 1|Discount 30|Presel. 1 discount|Own-cup discount"},
    {"FrmAssSel", "Price number per selection|Selection 1|Selection 18"},
    {"FrmAssSet", "Price number per sector|Sector 11|Sector 21|Sector 18|Sector 68"},
    {"FrmTotali",
     "Totals|Totals|Takings|Discounts|Overpay|Paid vends|Free vends|Jug vends|Test vends|Presel. 1|Presel. 2|"
     "Non-resettable totals|Takings|Paid vends"},
    {"FrmBattute",
     "Paid vends|Beverages|Bev. 18|Counters|Preselection 1|Preselection 4|Sectors|Sect. 11|Sect. 21|Sect. 12|Sect. 68"},
    {"FrmGratis", "Gratis|Bevande|Bev. 18|Settori|Set. 68|Set. 68"},
    {"FrmBricco", "Bricco|Bevande|Bev. 18"},
    {"FrmProva", "Prova|Bevande|Bev. 18|Settori|Set. 68|Set. 68"},
    {"FrmMonete", "Coins|Coin counter 1|Coin counter 9|Contatore moneta 10"},
    {"FrmMDBaudit",
     "MDB audit|Amount paid into the tubes|Amount put into the tubes by hand|Amount paid out of the tubes|"
     "Amount taken out of the tubes by hand|Amount loaded onto keys|Amount taken from keys|Clear MDB data"},
    {"FrmCancella", "Clear data|Clear data|Clear non-resettable data|Close"},
    {"FrmOpzioni",
     "Opzioni|Master|Off|On|Permanent credit|Multivend|Enable cup sensor|Rinsing|Language|Decimal point|"
     "00000, 0000.0, 000.00, 00.000|Coin mechanism|Token,G13,Executive,MDB,|Machine type|0,1|Machine number|"
     "Location|Telephone code|Customer number|Rev. master|Alder|Double FreshBrew coffee|Rinse cycle|FreshBrew tea|"
     "Power board NTC via Master|Cup arm at delivery|Always dispense cup|Cooling unit NTC|Overpay timeout|Rinse dose|"
     "Min. probe sensitivity|Max. probe sensitivity|Rev. potenza|Cedar|Credit timeout|Cedar NTC via Master|"
     "Enable Cedar sensor|Cedar sensor on Master|Rev. cedar"},
    {"FrmAzione",
     "Preventive maintenance|Valves (cycles)|Water softener (cycles)|HACCP sanitising (cycles)|Filter FB2 (cycles)"},
    {"FrmPassword", "Passwords|Password|Sales data code|Clear data code"},
    {"FrmTemperatura",
     "Temperature|Power board|Boiler temperature (°C)|Refrigerator temperature (°C)|Cedar|Tank temperature (°C)|"
     "Temperature delta (°C)|Defrost after|Defrost for|Temperature offset (°C)"},
    {"FrmGrafico", "Graph|Temperatures over time (°C)"},
    {"FrmOrologio",
     "Clock|Set time and date|ore|minuti|giorno|mese|anno|Rinses|Rinse 1|Rinse 1 ore|Rinse 2 minuti|Switch-on times|"
     "Start 1|End 1|Start 2|End 2|Discount times|Start 1|End 2"},
    {"FrmInOut",
     "In/Out test|Start test|Normal operation|Master|Inputs|Door open|Mains present|Boiler temperature (°C)|Alder|"
     "Grounds tray full|Paper FB2 present|Boiler minimum level|Safety thermostat|Outputs: locked until the test "
     "runs|Water valve 1|Spare output|Cedar|"
     "Sector 11|Sector 21|Sector 68|Compressor|Tank temperature (°C)"},
    {"FrmTestCedar", "Cedar test|1|6|Selection under test|Zero the motors"},
    {"FrmSchema",
     "Hydraulic diagram|Water valve 1|Drain pump|Boiler minimum level|Waste bucket full|Boiler|Boiler|Water inlet|"
     "Boiler|Boiler heater|Waste bucket"},
    {"FrmAllarmi", "Alarms|Last 10 alarms detected"},
    {"FrmInfo", std::string("Kestrel|Program Info|Kestrel|Rev.") + ProgramVersion},
};

TEST(Texts, StandOnTheirPagesInReadingOrder) {
    for (const auto& [name, expected] : Texts) {
        StartedWorld world;
        LoadLanguage("English.lng");
        auto& page = world.open<Page>(name);
        std::vector<std::string> texts = textsOf(page.Arrange());
        texts.insert(texts.begin(), page.Caption);
        auto from = texts.begin();
        std::istringstream words(expected);
        for (std::string text; std::getline(words, text, '|') && from != texts.end();) {
            from = std::find(from, texts.end(), text);
            EXPECT_NE(from, texts.end()) << name << ": " << text;
        }
    }
}

/// What a screen reader, the search and the list of changes say.
TEST(Texts, CallEachControlOfAPageByANameOfItsOwnInEveryLanguage) {
    const std::regex numbered(" \\([0-9]+\\)$");
    StartedWorld world;
    for (const auto& [name, make] : AllPages()) ShowPage(name);
    world.settle();
    for (const char* language : {"Italiano", "English", "Deutsch", "Francais", "Espanol"}) {
        LoadLanguage(std::string(language) + ".lng");
        for (Page* page : LoadedPages()) {
            page->ShowTexts();
            const std::string& name = page->name();
            std::map<std::string, int> times;
            for (const NamedControl& each : NamedControls(*page)) {
                ++times[each.name];
                const bool isNumbered = std::regex_search(each.name, numbered);
                // A bar that shows how a page is filled, a gauge's figure, and what no eye can tell apart either.
                const bool mayBe = dynamic_cast<ProgressBar*>(each.control) || dynamic_cast<LedBar*>(each.control) ||
                                   dynamic_cast<SevenSegment*>(each.control) ||
                                   dynamic_cast<ClockDisplay*>(each.control) || each.name.starts_with("Set. 68");
                EXPECT_TRUE(!isNumbered || mayBe) << language << " " << name << ": " << each.name;
            }
            for (const auto& [text, count] : times) {
                EXPECT_EQ(count, 1) << language << " " << name << ": " << text;
                EXPECT_FALSE(text.empty()) << language << " " << name;
            }
        }
    }
}

TEST(Texts, AreFoundByAnyPartOfTheNameOfAPageOrASetting) {
    StartedWorld world;
    LoadLanguage("English.lng");
    const std::vector<Findable> all = AllFindable();
    EXPECT_EQ(LoadedPages().size(), 0U) << "no page is opened for it";
    EXPECT_EQ(Matching(all, "").size(), AllPages().size());
    struct Row {
        const char *typed, *page, *control;
    };
    for (const auto& [typed, page, control] :
         {Row{"set pr", "FrmPrezzi", ""}, Row{"PRICE 12", "FrmPrezzi", "Price 12"},
          Row{"2nd powder delay step 3", "FrmDosi", "Step 3 (times in s), 2nd powder delay"},
          Row{"enable int", "FrmInter", "Enable intermittent dosing, 1"}, Row{"doses", "FrmDosi", ""},
          Row{"boiler temperature", "FrmTemperatura", "Boiler temperature (\u00B0C)"}}) {
        const std::vector<Findable> found = Matching(all, typed);
        ASSERT_FALSE(found.empty()) << typed;
        EXPECT_EQ(found.front().page + "|" + found.front().control, std::string(page) + "|" + control) << typed;
    }
    EXPECT_TRUE(Matching(all, "price xyz").empty());
    LoadLanguage("Francais.lng");
    EXPECT_FALSE(Matching(AllFindable(), "temperature chaudiere").empty()) << "typed without its accents";

    const std::vector<Findable> price = Matching(all, "price 12");
    Control* opened = nullptr;
    OpenFound(price.front(), [&opened](Control* control) { opened = control; });
    world.settle();
    EXPECT_EQ(opened, &dynamic_cast<FrmPrezzi&>(*FindLoadedPage("FrmPrezzi")).HScroll1[11]);

    LoadLanguage("English.lng");
    MDIForm1().entry("smnuTempi").Enabled = false;
    OpenFound(Matching(AllFindable(), "times").front(), [](Control*) {});
    OpenFound(Matching(AllFindable(), "clear data").front(), [](Control*) {});
    world.settle();
    ASSERT_EQ(LoadedPages().size(), 1U) << "as the menu opens it";
    EXPECT_EQ(LoadedPages().front()->name(), "FrmCancella");
}

}  // namespace
}  // namespace kestrel::testing
