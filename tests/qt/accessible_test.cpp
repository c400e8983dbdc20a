// What a screen reader gets: every control has a name and a value, can be operated, and tells of changes.
#include <QAccessible>
#include <QTemporaryDir>
#include <fstream>

#include "pages/controls/frm_controls.h"
#include "platform/qt/words.h"
#include "shell/language_files.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class Accessibility : public ViewTest {
  protected:
    Accessibility() { showLoaded(controls); }
    ~Accessibility() override { closeAll(); }
    QAccessibleInterface& of(const Control& control) const {
        return *QAccessible::queryAccessibleInterface(&widgetOf(control));
    }

    FrmControls controls;
};

TEST_F(Accessibility, FollowsTheCaptionsOfTheLanguage) {
    controls.BarCaption[0].Caption = "Wasser";
    controls.TextCaption[0].Caption = "Code";
    QApplication::processEvents();
    EXPECT_EQ(of(controls.Bar[0]).text(QAccessible::Name), QStringLiteral("Wasser"));
    EXPECT_EQ(of(controls.Text[0]).text(QAccessible::Name), QStringLiteral("Code"));
}

TEST_F(Accessibility, SaysWhatWaitsForTheBoard) {
    for (Control* control : std::initializer_list<Control*>{&controls.Bar[2], &controls.Slider[4], &controls.Toggle[4],
                                                            &controls.Switch[4], &controls.Text[2]})
        EXPECT_EQ(of(*control).text(QAccessible::Description), word(Word::WaitingForTheBoard));
    controls.Bar[2].Value = 96;
    EXPECT_TRUE(of(controls.Bar[2]).text(QAccessible::Description).isEmpty());
}

TEST_F(Accessibility, OperatesTheControls) {
    auto* value = of(controls.Bar[0]).valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->maximumValue().toInt(), 255);
    value->setCurrentValue(33);
    viewOf(controls.Bar[0]).endGesture();
    EXPECT_EQ(controls.Bar[0].Value.get(), 33);

    const QString press = QAccessibleActionInterface::pressAction();
    auto* toggle = of(controls.Toggle[0]).actionInterface();
    ASSERT_TRUE(toggle->actionNames().contains(press));
    toggle->doAction(press);
    EXPECT_TRUE(controls.Toggle[0].Active);
    EXPECT_TRUE(of(controls.Toggle[0]).state().checked);
    of(controls.Toggle[2]).actionInterface()->doAction(press);
    EXPECT_FALSE(controls.Toggle[2].Active) << "disabled";

    of(controls.Slider[0]).actionInterface()->doAction(QAccessibleActionInterface::decreaseAction());
    viewOf(controls.Slider[0]).endGesture();
    EXPECT_EQ(controls.Slider[0].Position.get(), 0);
    EXPECT_EQ(of(controls.Slider[0]).text(QAccessible::Value), QStringLiteral("Off"));
}

TEST_F(Accessibility, TakesItsWordsFromTheSectionOfTheWindowWhateverItIsCalled) {
    const QTemporaryDir directory;
    QtPlatform there{{.directory = directory.path().toStdString(), .devices = {}}};
    setPlatform(&there);
    for (const auto& [mark, expected] :
         {std::pair{";-- Fenster", "N\u00E4chstes"}, {";--", "N\u00E4chstes"}, {"; Fenster", "Next"}}) {
        std::ofstream(directory.filePath(QStringLiteral("x.lng")).toStdString())
            << std::string(615, '\n') << mark << "\nN\xE4"
            << "chstes\n";
        LoadLanguage("x.lng");
        EXPECT_EQ(word(Word::NextWindow).toStdString(), expected) << mark;
        EXPECT_EQ(word(Word::Tile), QStringLiteral("Tile")) << "beyond the end of the file";
    }
    ResetLanguageTable();
}

}  // namespace
}  // namespace kestrel::qt::testing
