// Where a control stands between its user and the board: not read yet, on its way, or not taken.
// A view must show nothing of the model that no board has told, and must not take back what the user did a moment ago.
#include <QLineEdit>
#include <QWheelEvent>

#include "platform/displays.h"
#include "platform/outside.h"
#include "platform/switches.h"
#include "qt/style/palette.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class Standing : public ViewTest {
  protected:
    Standing() {
        bar.design(0, 255, 10);
        figure.showsValue("25.5");
        figure.Caption = "1";
        slider.PositionLabels = "Off, On";
        many.PositionLabels = "1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16";
        rotary.PositionLabels = "0, 1, 2";
        clock.Minutes = 100;
        round.shape = Led::Shape::Round;
        box.OnKeyPress([this](int /*key*/) { entered = box.Text; });
        show([this] {
            return Column{Row{bar, figure, box}, Row{slider, many, rotary}, Row{toggle, led},
                          Row{lamp, round, ledBar, number, clock, gauge}};
        });
    }

    /// Other values than those that the controls have had from the beginning.
    void changeAll() {
        bar.Value = 200;
        figure.Caption = "20.0";
        box.Text = "77";
        for (SteppedSwitch* each : std::initializer_list<SteppedSwitch*>{&slider, &many, &rotary}) each->Position = 1;
        for (ToggleSwitch* each : std::initializer_list<ToggleSwitch*>{&toggle, &led}) each->Active = true;
        for (Led* each : {&lamp, &round}) each->Active = true;
        ledBar.Position = 70;
        number.Value = 5;
        clock.Minutes = 200;
        gauge.Value = 60;
    }
    void boardTellsAll() {
        const Control::Speaking board(nullptr, true);
        changeAll();
    }
    /// Where a bar stands is told by its figure.
    ViewBase& face(const Control& control) const { return viewOf(&control == &bar ? figure : control); }
    QImage picture(const Control& control) const { return face(control).widget().grab().toImage(); }
    QString spoken(const Control& control) const { return face(control).spokenValue(); }

    ScrollBar bar;
    Label figure;
    TextBox box;
    SliderSwitch slider, many;
    RotarySwitch rotary;
    ToggleSwitch toggle;
    LedSwitch led;
    Led lamp, round;
    LedBar ledBar;
    SevenSegment number;
    ClockDisplay clock;
    Thermometer gauge;
    std::string entered;
    const std::vector<Control*> operated{&bar, &box, &slider, &many, &rotary, &toggle, &led};
    const std::vector<Control*> all{&bar, &figure, &box,   &slider, &many,   &rotary, &toggle,
                                    &led, &lamp,   &round, &ledBar, &number, &clock,  &gauge};
    const QString notRead = QStringLiteral("not read yet");
};

TEST_F(Standing, UnreadControlsShowNothingOfTheModelUntilTheBoardHasTold) {
    std::vector<QImage> unread;
    for (Control* each : all) each->awaitValue();
    for (Control* each : all) unread.push_back(picture(*each));
    changeAll();
    for (std::size_t i = 0; i < all.size(); ++i) {
        ViewBase& view = viewOf(*all[i]);
        EXPECT_EQ(picture(*all[i]), unread[i]) << i << ": what the page sets of its own accord is not shown";
        EXPECT_EQ(view.spokenValue(), notRead) << i;
        EXPECT_EQ(view.spokenDescription(), notRead) << i;
        EXPECT_EQ(view.tip(), notRead) << i;
        EXPECT_EQ(view.checked(), std::nullopt) << i;
        EXPECT_FALSE(view.span()) << i;
        EXPECT_TRUE(view.widget().isEnabled()) << i;
    }
    boardTellsAll();
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_NE(picture(*all[i]), unread[i]) << i;
        EXPECT_NE(spoken(*all[i]), notRead) << i;
        EXPECT_FALSE(viewOf(*all[i]).tip().contains(notRead)) << i;
    }
    EXPECT_EQ(dynamic_cast<QLineEdit&>(widgetOf(box)).text(), QStringLiteral("77"));
}

TEST_F(Standing, UnreadControlsBeginNothing) {
    for (Control* each : operated) {
        each->awaitValue();
        QWidget& widget = face(*each).widget();
        widget.setFocus();
        const QImage before = picture(*each);
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_End, Qt::Key_Space, Qt::Key_7, Qt::Key_Return})
            QTest::keyClick(&widget, key);
        QWheelEvent wheel({9, 9}, widget.mapToGlobal(QPointF(9, 9)), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &wheel);
        EXPECT_FALSE(wheel.isAccepted()) << "the page scrolls";
        QTest::mouseDClick(&widget, Qt::LeftButton);
        QTest::mousePress(&widget, Qt::LeftButton, {}, {widget.width() - 6, widget.height() / 2});
        face(*each).moveTo(1);
        EXPECT_EQ(picture(*each), before);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, {widget.width() - 6, widget.height() / 2});
    }
    figure.awaitValue();
    QTest::mouseClick(widgetOf(figure).findChild<QLineEdit*>(), Qt::LeftButton);
    const Control::Speaking board(nullptr, true);
    for (Control* each : operated) EXPECT_EQ(spoken(*each), notRead);
    bar.Value = 0;
    figure.Caption = "0";
    EXPECT_EQ(spoken(bar), QStringLiteral("0")) << "no field was opened";
}

TEST_F(Standing, AChangeThatWasLostIsMarkedAndSaidUntilTheUserActsAgain) {
    struct Case {
        Control& control;
        const char* wanted;
        const char* said;
    };
    for (const Case& c :
         {Case{bar, "71", "you set 71, the board has 20.0"}, Case{box, "88", "you set 88, the board has 77"},
          Case{slider, "Off", "you set Off, the board has On"}, Case{rotary, "2", "you set 2, the board has 1"},
          Case{toggle, "0", "you set off, the board has on"}, Case{led, "0", "you set off, the board has on"}}) {
        boardTellsAll();
        const QImage before = picture(c.control);
        c.control.tellNotTaken({c.wanted, false});
        EXPECT_NE(picture(c.control), before) << c.said;
        EXPECT_EQ(face(c.control).spokenDescription().toStdString(), c.said);
        EXPECT_TRUE(face(c.control).tip().startsWith(QString::fromLatin1(c.said)));
        c.control.tellNotTaken({c.wanted, true});
        EXPECT_TRUE(face(c.control).tip().contains(QStringLiteral("second copy has another value")));
    }
    bar.UserMove(71);
    EXPECT_TRUE(face(bar).tip().startsWith(QStringLiteral("waiting for the board: 20.0 → 71")));
    EXPECT_EQ(spoken(bar), QStringLiteral("20.0 → 71"));
}

TEST_F(Standing, WhatWasLostLooksOtherThanWhatIsOnItsWay) {
    for (Control* each : operated) {
        each->tellNotTaken({"1", false});
        const QImage lost = picture(*each);
        bool hasAlarm = false;
        for (int y = 0; y < lost.height(); ++y)
            for (int x = 0; x < lost.width(); ++x) hasAlarm |= lost.pixelColor(x, y) == colors().alarm;
        EXPECT_TRUE(hasAlarm);
    }
}

TEST_F(Standing, AnActThatWaitsForTheEndOfAnExchangeIsNotTakenBackMeanwhile) {
    struct Case {
        Control& control;
        std::function<void(QWidget&)> act;
        const char* shown;
    };
    const auto type = [](const char* text) {
        return [text](QWidget& widget) {
            QTest::keyClicks(&widget, QString::fromLatin1(text));
            QTest::keyClick(&widget, Qt::Key_Return);
        };
    };
    const auto clickRight = [](QWidget& widget) {
        clickIn(widget, {widget.width() - 6, widget.height() / 2});
        FinishGestures();
    };
    boardTellsAll();
    box.Text = "";
    slider.Position = 0;
    figure.Caption = "99";
    for (const Case& c : {Case{bar, type("98"), "98"}, Case{bar, clickRight, "100"}, Case{slider, clickRight, "On"},
                          Case{box, type("55"), "55"}}) {
        QWidget& widget = c.act.target_type() == typeid(clickRight) ? widgetOf(c.control) : face(c.control).widget();
        widget.setFocus();
        const std::string before = c.control.text();
        ExchangeOpened();
        c.act(widget);
        EXPECT_EQ(c.control.text(), before) << c.shown;
        EXPECT_TRUE(c.control.actWaits());
        EXPECT_TRUE(spoken(c.control).endsWith(QString::fromLatin1(c.shown)));
        ExchangeEnded();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !c.control.actWaits(); }, 1000));
        EXPECT_EQ(c.control.text(), c.shown);
        EXPECT_TRUE(spoken(c.control).endsWith(QString::fromLatin1(c.shown)));
        const Control::Speaking board(nullptr, true);
        bar.Value = 99;
    }
    EXPECT_EQ(entered, "55");
    // Refused in the meantime: what the board has is shown again.
    bar.Value = 99;
    ExchangeOpened();
    clickRight(widgetOf(bar));
    bar.Enabled = false;
    ExchangeEnded();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bar.actWaits(); }, 1000));
    EXPECT_EQ(spoken(bar), QStringLiteral("99"));
}

}  // namespace
}  // namespace kestrel::qt::testing
