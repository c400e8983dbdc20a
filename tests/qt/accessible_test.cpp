// What a screen reader gets: every control has a name and a value, can be operated, and tells of changes.
#include <QAccessible>
#include <QLineEdit>
#include <QScrollArea>
#include <QTemporaryDir>
#include <fstream>

#include "gallery/frm_controls.h"
#include "language/language_files.h"
#include "qt/window/words.h"
#include "screen_fixture.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class Accessibility : public ViewTest {
  protected:
    Accessibility() { showLoaded(controls); }
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
        EXPECT_TRUE(of(*control).text(QAccessible::Description).contains(word(Word::WaitingForTheBoard)));
    controls.Bar[2].Value = 96;
    EXPECT_FALSE(of(controls.Bar[2]).text(QAccessible::Description).contains(word(Word::WaitingForTheBoard)));
}

TEST_F(Accessibility, OperatesTheControls) {
    auto* value = of(controls.Bar[0]).valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_DOUBLE_EQ(value->maximumValue().toDouble(), 25.5) << "as it is shown";
    value->setCurrentValue(3.3);
    controls.Bar[0].UserFinish();
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
    controls.Slider[0].UserFinish();
    EXPECT_EQ(controls.Slider[0].Position.get(), 0);
    EXPECT_EQ(of(controls.Slider[0]).text(QAccessible::Value), QStringLiteral("Off"));
}

TEST_F(Accessibility, ReadsAndEditsALineOfText) {
    auto& line = dynamic_cast<QLineEdit&>(widgetOf(controls.Text[0]));
    line.setText(QStringLiteral("1 23"));
    auto* text = of(controls.Text[0]).textInterface();
    struct Row {
        int offset;
        QAccessible::TextBoundaryType kind;
        const char* piece;
    };
    for (const auto& [offset, kind, piece] :
         {Row{0, QAccessible::WordBoundary, "1"}, Row{1, QAccessible::WordBoundary, " "},
          Row{3, QAccessible::WordBoundary, "23"}, Row{4, QAccessible::WordBoundary, "23"},
          Row{-2, QAccessible::SentenceBoundary, "1 23"}, Row{2, QAccessible::CharBoundary, "2"},
          Row{4, QAccessible::CharBoundary, ""}, Row{4, QAccessible::LineBoundary, "1 23"},
          Row{5, QAccessible::WordBoundary, ""}}) {
        int from = 0, to = 0;
        EXPECT_EQ(text->textAtOffset(offset, kind, &from, &to).toStdString(), piece) << offset << " " << kind;
        EXPECT_EQ(text->text(from, to).toStdString(), piece);
    }
    of(controls.Text[0]).editableTextInterface()->replaceText(2, 4, QStringLiteral("4"));
    EXPECT_EQ(line.text(), QStringLiteral("1 4"));
    press(line, {Qt::Key_Return});
    EXPECT_EQ(controls.Text[0].Text.get(), "1 4") << "as if the user had typed it";
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
}

class AccessibleBus : public ScreenTest {
  protected:
    AccessibleBus() { QAccessible::setActive(true); }
    ~AccessibleBus() override { QAccessible::setActive(false); }
};

TEST_F(AccessibleBus, APageHasNoChildBeyondItsCount) {
    const ChildWindow& window = open(rows().front());
    auto* page = QAccessible::queryAccessibleInterface(window.findChild<QScrollArea*>());
    ASSERT_GT(page->childCount(), 0);
    for (int beyond = 0; beyond < 50; ++beyond) EXPECT_EQ(page->child(page->childCount() + beyond), nullptr);
}

}  // namespace
}  // namespace kestrel::qt::testing
