// A technician's session over a real line: what is on the screen before the boards answer, pages that are closed, a
// program that goes on without a line or is killed.
#include <sys/wait.h>
#include <unistd.h>

#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <csignal>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

#include "link/loaded_pages.h"
#include "pages/machine/frm_password.h"
#include "qt/window/main_window_view.h"
#include "session.h"
#include "shell/configuration.h"
#include "shell/main_window.h"
#include "wire.h"

namespace kestrel::testing {
namespace {

/// Sees what is on the screen while the program tries a port that does not answer.
class FirstPaint : public QObject {
  public:
    FirstPaint() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() != QEvent::Paint) return false;
        if (const auto* bar = qobject_cast<QMenuBar*>(receiver); bar && menus.isEmpty())
            for (const QAction* entry : bar->actions()) menus += entry->text().remove(u'&');
        const auto* label = qobject_cast<QLabel*>(receiver);
        if (label && !label->pixmap().isNull() && MDIForm1().mnuCox(2).Checked) lamps.insert(label->accessibleName());
        return false;
    }
    QStringList menus;
    std::set<QString> lamps;
};

TEST_F(Session, PaintsTheMenuInTheChosenLanguageAndTheLampsBeforeItWaitsForAPort) {
    const auto file = installation.configuration(platform->programName());
    stop();
    const Wire silent(second);
    std::ofstream(file) << "Com=2\nLingua=Deutsch\n";
    const FirstPaint seen;
    start();
    ASSERT_EQ(ActiveLanguage(), "Deutsch");
    EXPECT_TRUE(seen.menus.contains(QStringLiteral("Zeiten/Dosierung"))) << seen.menus.join(u' ').toStdString();
    EXPECT_EQ(seen.lamps.size(), 3U);
}

TEST_F(Session, ClosingAPageWithTheFocusInABoxSendsNothing) {
    platform->mainWindow().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&platform->mainWindow()));
    QWindow& keyboard = *platform->mainWindow().windowHandle();
    const auto openAndType = [&](const char* typed) {
        choose(MDIForm1().entry("smnuPassword"));
        const Page& page = *FindLoadedPage("FrmPassword");
        ASSERT_TRUE(eventually([&] { return page.arrivals() >= FrmPassword::Codes; }));
        EXPECT_EQ(qobject_cast<QLineEdit*>(QApplication::focusWidget()), nullptr) << "nothing waits for keys yet";
        QTest::keyClick(&keyboard, Qt::Key_Tab);
        auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(box, nullptr);
        box->selectAll();
        for (const char* key = typed; *key; ++key) QTest::keyClick(&keyboard, *key);
    };
    const QStringList write{QStringLiteral("write")};
    for (const char* typed : {"", "22222", ""}) {
        openAndType(typed);
        QTest::keyClick(&keyboard, Qt::Key_W, Qt::ControlModifier);
        EXPECT_TRUE(eventually([] { return FindLoadedPage("FrmPassword") == nullptr; }));
        QTest::qWait(1000);
        EXPECT_TRUE(board.exchanges(write).isEmpty()) << "typed: " << typed;
    }
    openAndType("22222\t");
    EXPECT_TRUE(eventually([&] { return board.value(MasterBoard, ServiceCode) == 22222; })) << "leaving it enters it";
}

TEST_F(Session, GoesOnWithoutALinkWhereExitFindsNoLauncherUntilAPortIsChosen) {
    installation.removeLauncher();
    FrmTempi& page = openTimes();
    choose(MDIForm1().entry("smnuExit"));
    EXPECT_EQ(notice(), "Check serial interface ");
    const qsizetype before = board.exchanges().size();
    choose(MDIForm1().entry("ssmnuTotali"));
    QTest::qWait(300);
    EXPECT_NE(FindLoadedPage("FrmTotali"), nullptr);
    EXPECT_EQ(board.exchanges().size(), before);
    for (int lamp = 1; lamp <= 3; ++lamp) EXPECT_EQ(MDIForm1().StatusBar1.Panels(lamp + 1).Picture, lamp) << "out";
    choose(MDIForm1().mnuCox(1));
    EXPECT_EQ(notice(), "");
    EXPECT_TRUE(stepIsConfirmed(page));
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A copy of this process that goes from one language to the other and back and saves its choice each time; nearly all
/// of its time goes into bringing the file to the disk.
pid_t startSaving() {
    const pid_t saver = fork();
    if (saver == 0)
        for (int language = 0;; language = 1 - language) MDIForm1().smnuLingue(language).UserClick();
    return saver;
}

TEST_F(Session, KilledWhileItSavesLeavesAWholeConfiguration) {
    const auto file = installation.configuration(platform->programName());
    std::set<std::string> whole;
    for (const int language : {0, 1}) {
        choose(MDIForm1().smnuLingue(language));
        whole.insert(contentOf(file));
    }
    ASSERT_EQ(whole.size(), 2U);
    std::minstd_rand chance(1);
    std::set<std::string> seen;
    for (int i = 0, kills = isLongRun() ? 1000 : 50; i < kills; i += 2)
        for (const pid_t saver : {startSaving(), startSaving()}) {
            usleep(static_cast<useconds_t>(1000 + chance() % 20'000));
            kill(saver, SIGKILL);
            waitpid(saver, nullptr, 0);
            ASSERT_TRUE(whole.contains(contentOf(file))) << "kill " << i << " left: " << contentOf(file);
            seen.insert(contentOf(file));
        }
    EXPECT_EQ(seen, whole) << "the copies did save";
}

}  // namespace
}  // namespace kestrel::testing
