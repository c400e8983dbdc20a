// Pages as widgets: everything can be reached and used by keys, nothing is cut off, and a value that arrives
// disturbs nothing but its own control.
#include "qt/window/page_view.h"

#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <map>
#include <set>

#include "drawn_texts.h"
#include "gallery/frm_controls.h"
#include "qt/views/pictures.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class PageOfAll : public ViewTest {
  protected:
    PageOfAll() {
        setPictureFolder(QStringLiteral(KESTREL_PICTURES));
        page = &showLoaded(controls);
    }
    QScrollArea& area() const { return dynamic_cast<QScrollArea&>(*page); }

    FrmControls controls;
    QWidget* page;
};

TEST_F(PageOfAll, CutsNoTextOffAndHasTargetsThatAreLargeEnough) {
    for (ViewBase* view : viewsOf(*page)) {
        QWidget& widget = view->widget();
        SCOPED_TRACE(view->spokenName().toStdString());
        expectTextsWhole(widget);
        EXPECT_TRUE(widget.parentWidget()->rect().contains(widget.geometry()));
        const bool isTarget = (widget.focusPolicy() & Qt::TabFocus) && !view->shows(controls.DrawnKey);
        EXPECT_GE(widget.height(), isTarget ? 32 : 0);
    }
}

TEST_F(PageOfAll, FitsTheSmallestScreenInUseAndScrollsInASmallerWindow) {
    // 1366 x 768 less the frame, menu, status bar and title bars.
    EXPECT_LE(area().widget()->minimumSizeHint().width(), 1350);
    EXPECT_LE(area().widget()->minimumSizeHint().height(), 650);
    page->resize(600, 300);
    settle();
    EXPECT_GT(area().verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(area().horizontalScrollBar()->maximum(), 0) << "blocks stand below one another";
    page->resize(area().widget()->minimumSizeHint().width() - 8, 300);
    settle();
    EXPECT_GT(area().horizontalScrollBar()->maximum(), 0) << "the widest block";
    page->resize(area().widget()->sizeHint());
    settle();
    EXPECT_EQ(area().verticalScrollBar()->maximum(), 0) << "the bar that was there does not stay by itself";
}

/// Counts what happens to widgets while a value arrives.
class Watcher : public QObject {
  public:
    explicit Watcher(QWidget& page) {
        page.installEventFilter(this);
        for (QWidget* widget : page.findChildren<QWidget*>()) widget->installEventFilter(this);
    }
    std::set<const QObject*> painted;
    std::map<const QObject*, int> layouts, resizes;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint) painted.insert(object);
        if (event->type() == QEvent::LayoutRequest) ++layouts[object];
        if (event->type() == QEvent::Resize) ++resizes[object];
        return false;
    }
};

TEST_F(PageOfAll, RepaintsOnlyTheControlWhoseValueArrives) {
    struct Case {
        const char* what;
        Control& control;
        std::function<void()> arrive;
    };
    for (const Case& c : std::initializer_list<Case>{
             {"value label", controls.BarValue[0], [this] { controls.BarValue[0].Caption = "9.9"; }},
             {"bar", controls.Bar[0], [this] { controls.Bar[0].Value = 7; }},
             {"slider", controls.Slider[1], [this] { controls.Slider[1].Position = 2; }},
             {"toggle", controls.Toggle[0], [this] { controls.Toggle[0].Active = true; }},
             {"lamp", controls.SquareLamp[0], [this] { controls.SquareLamp[0].Active = true; }},
             {"number", controls.Number[0], [this] { controls.Number[0].Value = 3; }},
             {"clock", controls.Clock[0], [this] { controls.Clock[0].Minutes = 61; }},
             {"gauge", controls.Gauge[0], [this] { controls.Gauge[0].Value = 50; }},
             {"text box", controls.Text[0], [this] { controls.Text[0].Text = "1"; }},
             {"lamp on a drawing", controls.DrawnLamp[1], [this] { controls.DrawnLamp[1].Active = true; }},
             {"locked", controls.Bar[3], [this] { controls.Bar[3].Enabled = false; }},
         }) {
        settle();
        Watcher watcher(*page);
        c.arrive();
        settle();
        EXPECT_TRUE(watcher.layouts.empty() && watcher.resizes.empty()) << c.what;
        const QWidget& own = widgetOf(c.control);
        const auto* moved = dynamic_cast<const ScrollBar*>(&c.control);
        const QWidget& figure = moved && moved->figure() ? widgetOf(*moved->figure()) : own;
        const QWidget& caption = c.control.caption() ? widgetOf(*c.control.caption()) : own;
        for (const QObject* object : watcher.painted) {
            const auto* widget = qobject_cast<const QWidget*>(object);
            EXPECT_TRUE(widget == &own || widget->isAncestorOf(&own) || &figure == widget || &caption == widget ||
                        figure.isAncestorOf(widget) || own.isAncestorOf(widget))
                << c.what;
        }
        EXPECT_TRUE(watcher.painted.contains(&own)) << c.what;
    }
}

TEST_F(PageOfAll, RepaintsNothingWhenTheSameValueArrivesAgain) {
    settle();
    Watcher watcher(*page);
    controls.BarValue[0].Caption = controls.BarValue[0].Caption;
    controls.Bar[0].Value = controls.Bar[0].Value;
    controls.SquareLamp[1].Active = true;
    controls.Number[0].Value = controls.Number[0].Value;
    controls.Table.Rows = controls.Table.Rows;
    controls.BarCaption[0].Caption = controls.BarCaption[0].Caption;
    settle();
    EXPECT_TRUE(watcher.painted.empty());
    EXPECT_TRUE(watcher.layouts.empty() && watcher.resizes.empty());
}

TEST_F(PageOfAll, MovesNothingWhenAControlIsHidden) {
    const QRect before = widgetOf(controls.Switch[0]).geometry();
    controls.Toggle[0].Visible = false;
    controls.TwoStateCaption[0].Visible = false;
    settle();
    EXPECT_FALSE(widgetOf(controls.Toggle[0]).isVisible());
    EXPECT_EQ(widgetOf(controls.Switch[0]).geometry(), before);
}

TEST_F(PageOfAll, LaysOutOnceForAWholeLanguage) {
    QWidget* contents = area().widget();
    settle();
    Watcher watcher(*contents);
    for (Label& caption : controls.BarCaption) caption.Caption = "a much longer caption than before";
    for (Label& caption : controls.SliderCaption) caption.Caption = "longer";
    controls.BarFrame.Caption = "Another title";
    controls.Command[0].Caption = "Another caption";
    settle();
    EXPECT_LE(watcher.layouts[contents], 2);
    for (Label& caption : controls.BarCaption)
        EXPECT_GE(widgetOf(caption).width(), widgetOf(caption).minimumSizeHint().width());
}

class Pages : public ViewTest {
  protected:
    Frame outer, inner;
    Label caption, value, second, secondValue;
    ScrollBar bar, secondBar;
    Picture drawing{"controls"};
    Led lamp, lost;
};

TEST_F(Pages, LockAndHideWhatStandsInAFrame) {
    show([this] { return Group(outer, Column{Group(inner, Row{caption, bar, value})}); });
    for (Frame* frame : {&outer, &inner}) {
        frame->Enabled = false;
        EXPECT_FALSE(widgetOf(bar).isEnabled());
        bar.Enabled = false;
        frame->Enabled = true;
        EXPECT_FALSE(widgetOf(bar).isEnabled()) << "its own flag was cleared meanwhile";
        bar.Enabled = true;
        EXPECT_TRUE(widgetOf(bar).isEnabled());
        frame->Visible = false;
        EXPECT_FALSE(widgetOf(bar).isVisible());
        frame->Visible = true;
        EXPECT_TRUE(widgetOf(bar).isVisible());
    }
}

TEST_F(Pages, KeepTheColumnsOfStackedGroupsInLine) {
    caption.Caption = "short";
    second.Caption = "a caption that is far longer";
    show([this] {
        return Column{Group(outer, Grid(3, {caption, bar, value})),
                      Group(inner, Grid(3, {second, secondBar, secondValue}))};
    });
    const auto left = [this](Control& control) { return widgetOf(control).mapToGlobal(QPoint(0, 0)).x(); };
    EXPECT_EQ(left(bar), left(secondBar));
    second.Caption = "x";
    caption.Caption = "now this one is the longer caption by far";
    settle();
    EXPECT_EQ(left(bar), left(secondBar));
    EXPECT_GE(left(bar), left(caption) + widgetOf(caption).minimumSizeHint().width());
}

TEST_F(Pages, TellAValueThatIsTooLongForItsPlace) {
    value.showsValue("99");
    show([this] { return Row{caption, value}; });
    for (const char* figure : {"7", "4294967295", "12"}) {
        value.Caption = figure;
        settle();
        EXPECT_EQ(viewOf(value).tip().toStdString(), std::string(figure).size() > 2 ? figure : "");
    }
}

TEST_F(Pages, WriteFiguresWithTheSystemsSeparator) {
    struct : QtPlatform {
        using QtPlatform::QtPlatform;
        std::string decimalSeparator() const override { return ","; }
    } there{{.directory = "/tmp", .devices = {}}};
    setPlatform(&there);
    SevenSegment display;
    display.decimals = 1;
    Thermometer thermometer;
    StripChart chart(1);
    show([&] { return Row{display, thermometer, chart}; });
    for (const double reading : {23.5, 99'999.5}) {
        display.Value = thermometer.Value = reading;
        chart.addTime(reading);
        chart.addSample(0, static_cast<int>(chart.times().size()) - 1, reading);
        for (const Control* each : std::initializer_list<const Control*>{&display, &thermometer, &chart})
            EXPECT_TRUE(viewOf(*each).spokenValue().contains(QStringLiteral("%1,5").arg(static_cast<int>(reading))));
        EXPECT_EQ(viewOf(display).spokenValue().contains(QStringLiteral("range")), reading > 999) << "of four figures";
    }
    closeAll();
}

TEST_F(Pages, PlaceControlsOnADrawingAndScaleThemWithIt) {
    const std::filesystem::path drawings = KESTREL_PICTURES;
    usePicturesOf(drawings.parent_path());
    usePicturesOf("/dev");  // has none of its own
    QWidget& page = show([this] { return Canvas(drawing, {{&lamp, "lamp0"}, {&lost, "no such place"}}); });
    const QSize before = widgetOf(lamp).size();
    page.resize(page.size() * 2);
    settle();
    EXPECT_NEAR(widgetOf(lamp).width(), before.width() * 2, 3);
    EXPECT_TRUE(widgetOf(lost).isVisible() && widgetOf(lost).width() > 8) << "shown though its place is missing";
}

TEST_F(Pages, ShowTheControlsOfADrawingThatIsMissing) {
    setPictureFolder(QStringLiteral("/nowhere"));
    show([this] { return Canvas(drawing, {{&lamp, "lamp0"}, {&lost, "lamp1"}}); });
    EXPECT_FALSE(widgetOf(lamp).geometry().intersects(widgetOf(lost).geometry()));
}

TEST_F(Pages, LetGoOfTheirModelsAndGoAtOnce) {
    TestPage page([this] { return Group(outer, Row{caption, bar, value}); });
    const QPointer<QWidget> widget = buildPage(page);
    widget->show();
    dismissPage(widget);
    bar.Value = 5;
    caption.Caption = "nobody is shown this";
    EXPECT_TRUE(widget.isNull()) << "a page that lived on would ask models that are gone";
}

}  // namespace
}  // namespace kestrel::qt::testing
