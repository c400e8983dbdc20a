// What is on the screen before any board has answered.
// A program that stands there empty for seconds is taken for a dead one.

#include <QLabel>
#include <QMenuBar>
#include <fstream>
#include <set>

#include "session.h"
#include "shell/configuration.h"
#include "shell/main_window.h"

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
    const BoardProcess silent(installation.program(), {QStringLiteral("--fault"), QStringLiteral("silent=1")},
                              SecondLine);
    std::ofstream(file) << "Com=2\nLingua=Deutsch\n";
    const FirstPaint seen;
    start();
    ASSERT_EQ(ActiveLanguage(), "Deutsch");
    EXPECT_TRUE(seen.menus.contains(QStringLiteral("Zeiten/Dosierung"))) << seen.menus.join(u' ').toStdString();
    EXPECT_EQ(seen.lamps.size(), 3U);
}

}  // namespace
}  // namespace kestrel::testing
