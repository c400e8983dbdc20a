// The strip chart: it follows, stops and moves as the user says, and stays quick however long it runs.
#include <QToolButton>
#include <numeric>

#include "platform/displays.h"
#include "qt/views/strip_chart_view.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

constexpr double Minute = ChartWindow::Minute;

TEST(ChartWindow, FollowsTheNewestValueUntilTheUserMovesAway) {
    ChartWindow window;
    window.setNewest(5 * Minute);
    EXPECT_DOUBLE_EQ(window.from(), 0);
    EXPECT_DOUBLE_EQ(window.to(), ChartWindow::FirstSpan);
    window.setNewest(60 * Minute);
    EXPECT_DOUBLE_EQ(window.to(), 60 * Minute);
    window.pan(-1);
    EXPECT_DOUBLE_EQ(window.to(), 50 * Minute);
    window.setNewest(61 * Minute);
    EXPECT_DOUBLE_EQ(window.to(), 50 * Minute) << "it stays where the user put it";
    window.pan(-100);
    EXPECT_DOUBLE_EQ(window.from(), 0);
    window.pan(100);
    EXPECT_DOUBLE_EQ(window.to(), 61 * Minute);
    window.fit();
    window.setNewest(90 * Minute);
    EXPECT_DOUBLE_EQ(window.from(), 0);
    EXPECT_DOUBLE_EQ(window.to(), 90 * Minute);
    window.follow();
    EXPECT_DOUBLE_EQ(window.span(), ChartWindow::FirstSpan);
    EXPECT_DOUBLE_EQ(window.to(), 90 * Minute);
}

TEST(ChartWindow, ZoomsRoundThePointerWithinItsBounds) {
    ChartWindow window;
    window.setNewest(100 * Minute);
    window.pan(-2);
    const double still = window.from() + 0.25 * window.span();
    window.zoom(0.5, 0.25);
    EXPECT_NEAR(window.from() + 0.25 * window.span(), still, 1e-12);
    EXPECT_NEAR(window.span(), 5 * Minute, 1e-12);
    window.zoom(1e-9, 0.5);
    EXPECT_DOUBLE_EQ(window.span(), ChartWindow::ShortestSpan);
    window.zoom(1e9, 0.5);
    EXPECT_NEAR(window.span(), 100 * Minute, 1e-12);
}

std::vector<double> secondsUntil(int end) {
    std::vector<double> times(static_cast<std::size_t>(end));
    std::iota(times.begin(), times.end(), 0.0);
    return times;
}

std::vector<QPolygonF> lineOf(const StripChart::Channel& channel, int end, const ChartScale& scale) {
    const auto times = secondsUntil(end);
    return chartLine(channel, times, samplesWithin(channel, times, times.size(), 0, end), scale);
}

TEST(ChartLine, KeepsEveryPeakWhileItThinsTheSamples) {
    constexpr int Samples = 32767;
    StripChart::Channel channel;
    for (int i = 0; i < Samples; ++i) channel.samples.push_back({i, i == 12345 ? 99.0 : i % 7});
    const ChartScale scale{0, Samples, 0, 100, QRectF(0, 0, 500, 100)};
    const auto lines = lineOf(channel, Samples, scale);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_LE(lines[0].size(), 2 * 501);
    EXPECT_NEAR(lines[0].boundingRect().top(), scale.y(99), 1e-9);
}

TEST(ChartLine, BreaksWhereSamplesAreMissing) {
    const auto lines = lineOf({"", {{0, 1}, {1, 2}, {4, 3}, {5, 4}}}, 6, {0, 5, 0, 10, QRectF(0, 0, 100, 100)});
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].size(), 2);
    EXPECT_EQ(lines[1].size(), 2);
    EXPECT_DOUBLE_EQ(lines[1].front().x(), 80);
}

TEST(ChartLine, TakesTheSamplesInSightAndOneBeyond) {
    const auto times = secondsUntil(7);
    const StripChart::Channel channel{"", {{0, 1}, {1, 1}, {2, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 1}}};
    const auto few = samplesWithin(channel, times, times.size(), 2.5, 4.5);
    EXPECT_EQ(few.first, 2u);
    EXPECT_EQ(few.end, 6u);
    EXPECT_EQ(samplesWithin(channel, times, 4, 0, 6).end, 4u) << "paused";
    EXPECT_EQ(samplesWithin({}, {}, 0, 0, 6).end, 0u);
    const StripChart::Channel ahead{"", {{9, 1.0}}};  // its time has not come
    EXPECT_EQ(samplesWithin(ahead, times, times.size(), 0, 6).end, 0u);
}

class Chart : public ViewTest {
  protected:
    Chart() {
        chart.Title = "Temperatures";
        chart.setChannelName(0, "boiler");
        show([this] { return Column{chart}; });
        view().setFocus();
    }
    StripChartView& view() const { return dynamic_cast<StripChartView&>(viewOf(chart)); }
    void add(int samples) {
        for (int i = 0; i < samples; ++i) {
            const auto index = static_cast<int>(chart.times().size());
            chart.beginUpdate();
            chart.addTime(index * Minute);
            chart.addSample(0, index, index);
            chart.endUpdate();
        }
    }
    StripChart chart;
};

TEST_F(Chart, PausesFitsAndFollowsByKeysAndButtons) {
    add(60);
    const double at = view().timeWindow().to();
    EXPECT_NEAR(at, 59 * Minute, 1e-9);
    QTest::keyClick(&view(), Qt::Key_Space);
    add(5);
    EXPECT_TRUE(view().paused());
    EXPECT_DOUBLE_EQ(view().timeWindow().to(), at) << "paused: what comes meanwhile does not move it";
    QTest::keyClick(&view(), Qt::Key_Space);
    EXPECT_NEAR(view().timeWindow().to(), 64 * Minute, 1e-9);
    QTest::keyClick(&view(), Qt::Key_Left);
    EXPECT_EQ(view().timeWindow().mode(), ChartWindow::Mode::Free);
    for (QToolButton* button : view().findChildren<QToolButton*>()) {
        if (!button->accessibleName().startsWith(QStringLiteral("Show all"))) continue;
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_EQ(view().timeWindow().mode(), ChartWindow::Mode::Fit);
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_TRUE(button->isChecked()) << "the button says what holds, however often it is pressed";
    }
    QTest::keyClick(&view(), Qt::Key_End);
    EXPECT_EQ(view().timeWindow().mode(), ChartWindow::Mode::Follow);
}

TEST_F(Chart, TellsThePresentValues) {
    EXPECT_EQ(view().spokenName(), QStringLiteral("Temperatures"));
    add(3);
    EXPECT_TRUE(view().spokenValue().contains(QStringLiteral("boiler 2.0"))) << view().spokenValue().toStdString();
    chart.addTime(3 * Minute);
    EXPECT_FALSE(view().spokenValue().contains(QStringLiteral("2.0"))) << "no sample came with the newest time";
}

TEST_F(Chart, IsReadUnderThePointerAndByKeysAndFollowsWhenTheReadingEnds) {
    chart.Unit = "°C";
    add(3);
    for (int back = 0; back < 5; ++back) QTest::keyClick(&view(), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_TRUE(view().spokenValue().startsWith(QStringLiteral("0:00:00, boiler 0.0 °C")));
    QTest::keyClick(&view(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(view().spokenValue().startsWith(QStringLiteral("0:01:00, boiler 1.0 °C")));
    add(30);
    EXPECT_TRUE(view().spokenValue().startsWith(QStringLiteral("0:01:00"))) << "it stays where the user reads";
    QTest::keyClick(&view(), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_LE(view().timeWindow().from(), 0) << "what is read is in sight";
    QTest::keyClick(&view(), Qt::Key_End);
    QTest::mouseMove(&view(), QPoint(view().width() - 12, view().height() / 2));
    EXPECT_TRUE(view().spokenValue().startsWith(QStringLiteral("0:32:00, boiler 32.0")))
        << view().spokenValue().toStdString();
    QTest::mouseMove(&view(), QPoint(view().width() / 2, 4));
    EXPECT_TRUE(view().spokenValue().startsWith(QStringLiteral("boiler 32.0"))) << "beside the plot: the newest";
}

}  // namespace
}  // namespace kestrel::qt::testing
