// What a screen reader gets of the whole program: everything here goes over the real accessibility bus, to a client
// that sees nothing else of the program. A control without a name, or one called like its neighbour, cannot be set by
// a technician who does not see it.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <algorithm>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <tuple>

#include "accessible_node.h"
#include "bus_session.h"
#include "event_log.h"

namespace kestrel::testing {
namespace {

const QString Root = QStringLiteral("/org/a11y/atspi/accessible/root");
const QStringList Pages = {
    QStringLiteral("FrmConMac"),    QStringLiteral("FrmInter"),       QStringLiteral("FrmProUni"),
    QStringLiteral("FrmPresel"),    QStringLiteral("FrmTempi"),       QStringLiteral("FrmDosi"),
    QStringLiteral("FrmPagamento"), QStringLiteral("FrmPrezzi"),      QStringLiteral("FrmSconti"),
    QStringLiteral("FrmAssSel"),    QStringLiteral("FrmAssSet"),      QStringLiteral("FrmTotali"),
    QStringLiteral("FrmBattute"),   QStringLiteral("FrmGratis"),      QStringLiteral("FrmBricco"),
    QStringLiteral("FrmProva"),     QStringLiteral("FrmMonete"),      QStringLiteral("FrmMDBaudit"),
    QStringLiteral("FrmCancella"),  QStringLiteral("FrmOpzioni"),     QStringLiteral("FrmAzione"),
    QStringLiteral("FrmPassword"),  QStringLiteral("FrmTemperatura"), QStringLiteral("FrmGrafico"),
    QStringLiteral("FrmOrologio"),  QStringLiteral("FrmInOut"),       QStringLiteral("FrmTestCedar"),
    QStringLiteral("FrmSchema"),    QStringLiteral("FrmAllarmi"),     QStringLiteral("FrmInfo")};
constexpr int LongestWaitMs = 60'000;

bool comesTrue(const std::function<bool()>& condition) {
    QElapsedTimer time;
    for (time.start(); !time.hasExpired(LongestWaitMs); QThread::msleep(50)) {
        QCoreApplication::processEvents();
        if (condition()) return true;
    }
    return false;
}

struct Desktop {
    explicit Desktop(const QStringList& arguments = {}) : session(arguments) {
        application = std::make_unique<Node>(Node{session.bus(), session.programOnBus(), Root});
        EXPECT_TRUE(comesTrue([this] {  // the boards are known: pages open from now on
            const auto entry = application->find(QStringLiteral("menu item"), QStringLiteral("Set prices"));
            return entry && entry->is(Node::Enabled);
        }));
    }
    ~Desktop() {
        EXPECT_TRUE(session.isRunning()) << session.complaints().toStdString();
        EXPECT_EQ(session.complaints().toStdString(), "");
    }
    std::optional<Node> find(const char* role, const char* name) const {
        return application->find(QString::fromLatin1(role), QString::fromLatin1(name));
    }
    std::vector<Node> pages() const {
        const auto area = application->find(QStringLiteral("layered pane"), {});
        return area ? area->children() : std::vector<Node>();
    }

    BusSession session;
    std::unique_ptr<Node> application;
};

/// What stands there to be read beside controls, and what holds them together.
bool isControl(const Node& node, const QString& role) {
    static const QStringList others = {
        QStringLiteral("filler"),        QStringLiteral("panel"),     QStringLiteral("frame"),
        QStringLiteral("scroll bar"),    QStringLiteral("separator"), QStringLiteral("table cell"),
        QStringLiteral("column header"), QStringLiteral("tree item"), QStringLiteral("header")};
    if (others.contains(role) || !node.is(Node::Showing)) return false;
    return role != QStringLiteral("label") || !node.description().isEmpty();
}

TEST(Bus, HasEveryControlOfEveryPageByANameOfItsOwnWithItsRoleAndWhatItShows) {
    QStringList arguments;
    for (const QString& page : Pages) arguments += {QStringLiteral("--open"), page};
    const Desktop desktop(arguments);
    ASSERT_TRUE(comesTrue([&] { return desktop.pages().size() == static_cast<std::size_t>(Pages.size()); }));
    const std::set<QString> withFigure = {QStringLiteral("slider"),   QStringLiteral("dial"),
                                          QStringLiteral("label"),    QStringLiteral("indicator"),
                                          QStringLiteral("spin box"), QStringLiteral("chart")};
    int controls = 0;
    for (const Node& page : desktop.pages()) {
        SCOPED_TRACE(page.name().toStdString());
        std::map<std::pair<QString, QString>, int> times;
        for (const Node& each : page.all()) {
            const QString role = each.role();
            if (!isControl(each, role)) continue;
            const QString name = each.name();
            ++times[{role, name}];
            ++controls;
            EXPECT_NE(role, QStringLiteral("unknown")) << name.toStdString();
            EXPECT_TRUE(!withFigure.contains(role) || !each.description().isEmpty()) << name.toStdString();
        }
        for (const auto& [what, count] : times) {
            EXPECT_EQ(count, 1) << what.first.toStdString() << " " << what.second.toStdString();
            EXPECT_FALSE(what.second.isEmpty()) << what.first.toStdString();
        }
    }
    EXPECT_GT(controls, 700);
}

/// What cannot be worked yet, since its page is still being read, says so.
TEST(Bus, SetsAPriceAndHearsThatTheBoardHasConfirmedIt) {
    const Desktop desktop;
    ASSERT_TRUE(desktop.find("menu item", "Set prices")->act(QStringLiteral("Press")));
    std::optional<Node> price;
    ASSERT_TRUE(comesTrue([&] {
        price = desktop.find("spin box", "Price 3");
        return price && price->is(Node::Enabled);
    }));
    const EventLog events(*price);
    EXPECT_EQ(price->description(), QStringLiteral("0.70"));
    EXPECT_DOUBLE_EQ(price->value(), 0.7);
    EXPECT_DOUBLE_EQ(price->highest(), 655.35);
    price->setValue(0.85);
    const auto saysWaiting = [](const QString& text) { return text.contains(QStringLiteral("waiting")); };
    EXPECT_TRUE(comesTrue([&] {
        const QStringList& said = events.descriptions();
        return std::any_of(said.begin(), said.end(), saysWaiting) && said.back() == QStringLiteral("0.85");
    })) << events.descriptions().join(u'|').toStdString();
    EXPECT_GE(events.values(), 1);
    EXPECT_DOUBLE_EQ(price->value(), 0.85);
    EXPECT_FALSE(price->is(Node::Busy));
    EXPECT_EQ(desktop.find("spin box", "Price 4")->description(), QStringLiteral("0.65"));
}

/// Anything that it says it can be asked, at places that there may not be. An entry of a menu would leave the program.
void ask(const Node& asked, const std::function<int(int, int)>& number) {
    const int at = number(-2, 30), to = number(-2, 30);
    const auto kind = static_cast<unsigned>(number(0, 5));
    const std::tuple<const char*, const char*, QVariantList> questions[] = {
        {"Text", "GetText", {at, to}},
        {"Text", "GetTextAtOffset", {at, kind}},
        {"Text", "SetSelection", {number(-1, 1), at, to}},
        {"Text", "GetCharacterExtents", {at, kind % 2}},
        {"EditableText", "InsertText", {at, QStringLiteral("7"), 1}},
        {"EditableText", "DeleteText", {at, to}},
        {"Table", "GetAccessibleAt", {at, to}},
        {"Component", "GetAccessibleAtPoint", {at * 40, to * 25, kind % 2}},
    };
    const int which = number(0, 9);
    if (which < 8) {
        const auto& [interface, method, arguments] = questions[which];
        if (asked.has(interface)) asked.call(interface, method, arguments);
    } else if (which == 8) {
        if (asked.has("Value")) asked.setValue(number(0, 3) == 0 ? std::numeric_limits<double>::max() : to);
    } else if (const QStringList names = asked.actions();
               !names.isEmpty() && asked.role() != QStringLiteral("menu item")) {
        asked.act(names[at < 0 ? 0 : at % static_cast<int>(names.size())]);
    }
}

/// Ten minutes, beginning elsewhere: KESTREL_CLIENT_SECONDS=600 KESTREL_CLIENT_SEED=2 with --gtest_filter='*AClient*'
TEST(Bus, LetsAClientAskForAnyChildWhilePagesComeAndGo) {
    const auto given = [](const char* name, int otherwise) {
        return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
    };
    const int seconds = given("KESTREL_CLIENT_SECONDS", 15);
    std::mt19937 random(static_cast<unsigned>(given("KESTREL_CLIENT_SEED", 1)));
    const auto number = [&random](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    Desktop desktop;
    std::vector<Node> entries;
    for (const Node& each : desktop.application->all())
        if (each.role() == QStringLiteral("menu item") && each.actions().contains(QStringLiteral("Press")))
            if (const QString name = each.name();
                !name.isEmpty() && name != QStringLiteral("Exit") && !name.startsWith(QStringLiteral("COM")))
                entries.push_back(each);
    std::vector<Node> known{*desktop.application};
    int answers = 0;
    QElapsedTimer time;
    for (time.start(); !time.hasExpired(1000LL * seconds) && desktop.session.isRunning();) {
        if (number(0, 15) == 0)
            entries[static_cast<std::size_t>(number(0, static_cast<int>(entries.size()) - 1))].act(
                QStringLiteral("Press"));
        const Node asked = known[static_cast<std::size_t>(number(0, static_cast<int>(known.size()) - 1))];
        ask(asked, number);
        const int count = asked.property("Accessible", "ChildCount").toInt();
        const int beyond = number(0, 4) == 0 ? 1000 : number(0, 2);
        const auto child = asked.child(number(-1, count + beyond));
        if (!child || child->service.isEmpty()) continue;
        answers += child->description().isEmpty() && child->name().isEmpty() ? 0 : 1;
        if (known.size() < 500)
            known.push_back(*child);
        else
            known[static_cast<std::size_t>(number(1, 499))] = *child;
    }
    EXPECT_GT(answers, 20);
}

}  // namespace
}  // namespace kestrel::testing

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
