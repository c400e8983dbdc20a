// The palettes, and what is drawn with them, can be read and told apart, disabled and on grey paper too.
#include <QPixmap>
#include <algorithm>
#include <map>

#include "gallery/frm_controls.h"
#include "qt/style/palette.h"
#include "qt/views/label_view.h"
#include "qt/views/lamp_pictures.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

struct Look {
    const char* name;
    Theme theme;
    const Colors& colors;
};

const Look Looks[] = {{"light", Theme::Light, lightColors},
                      {"dark", Theme::Dark, darkColors},
                      {"contrast", Theme::Contrast, contrastColors}};

TEST(Contrast, IsMeasuredAsTheGuidelinesSay) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrast(QColor(0x777777), Qt::white), 4.48, 0.01);
    EXPECT_DOUBLE_EQ(contrast(Qt::red, Qt::red), 1);
}

TEST(Contrast, OfTextsAndShapesIsEnoughInEveryPalette) {
    const auto expectContrast = [](const QColor& ink, const QColor& ground, double least, const char* look) {
        EXPECT_GE(contrast(ink, ground), least)
            << look << ink.name().toStdString() << " on " << ground.name().toStdString();
    };
    for (const auto& [name, theme, c] : Looks) {
        for (const QColor& ground : {c.window, c.panel, c.field, c.button}) {
            for (const QColor& ink : {c.text, c.quietText, c.disabledText})
                expectContrast(ink, ground, TextContrast, name);
            for (const QColor& shape :
                 {c.outline, c.accent, c.lit, c.alarm, c.waiting, c.disabledText, c.channels[0], c.channels[1]})
                expectContrast(shape, ground, ShapeContrast, name);
        }
        for (const auto& [ink, ground] :
             {std::pair(c.onAccent, c.accent), std::pair(c.onTitle, c.title), std::pair(c.text, c.line),
              std::pair(c.alarm, c.field), std::pair(c.alarm, c.panel), std::pair(c.onLit, c.lit)})
            expectContrast(ink, ground, TextContrast, name);
        // Any other colour that is asked for is made readable.
        applyLook(*qApp, theme);
        for (const QColor& asked : {c.lit, c.alarm, QColor(Qt::black), QColor(0xffffff), QColor(0xff0000),
                                    QColor(0x00ff00), QColor(0x0000ff), QColor(0xffff00), QColor(0x808080)})
            for (const QColor& ground : {c.window, c.panel})
                expectContrast(readableText(asked), ground, TextContrast, name);
    }
}

/// What is drawn in a control's place, three times as large as on the screen.
class Drawn {
  public:
    static constexpr int Scale = 3;
    static QImage wholePage(QWidget& page) {
        QPixmap pixmap(page.size() * Scale);
        pixmap.setDevicePixelRatio(Scale);
        page.render(&pixmap);
        return pixmap.toImage();
    }

    Drawn(const QImage& page, const QWidget& widget)
        : image_(page.copy(QRect(widget.mapTo(widget.window(), QPoint(0, 0)) * Scale, widget.size() * Scale))) {
        for (int y = 0; y < image_.height(); ++y)
            for (int x = 0; x < image_.width(); ++x) ++counts_[image_.pixel(x, y)];
    }
    /// Contrast of the strongest colour with the most frequent one.
    double strongest() const {
        const auto rarer = [](const auto& one, const auto& other) { return one.second < other.second; };
        const QColor ground(std::max_element(counts_.begin(), counts_.end(), rarer)->first);
        double most = 1;
        for (const auto& [color, count] : counts_) most = std::max(most, contrast(QColor(color), ground));
        return most;
    }
    /// Part of the pixels that stand apart from the paper at the corner.
    double filled() const {
        const QColor paper = image_.pixelColor(1, 1);
        int apart = 0;
        for (const auto& [color, count] : counts_)
            if (contrast(QColor(color), paper) > 2) apart += count;
        return static_cast<double>(apart) / (image_.width() * image_.height());
    }

  private:
    QImage image_;
    std::map<QRgb, int> counts_;
};

class DrawnContrast : public ViewTest {};

TEST_F(DrawnContrast, IsEnoughForTextsEnabledOrNotAndLampsAreToldApartByTheirShapeAlone) {
    for (const Look& look : Looks) {
        SCOPED_TRACE(look.name);
        applyLook(*qApp, look.theme);
        FrmControls controls;
        QWidget& page = showLoaded(controls);
        const QImage image = Drawn::wholePage(page);
        for (const ViewBase* view : viewsOf(page)) {
            const auto* label = dynamic_cast<const LabelView*>(view);
            if (!label || label->text().isEmpty()) continue;
            EXPECT_GE(Drawn(image, *label).strongest(), TextContrast) << label->text().toStdString();
        }
        for (Control* control : std::initializer_list<Control*>{&controls.Command[0], &controls.Command[1],
                                                                &controls.Text[0], &controls.Text[1]})
            EXPECT_GE(Drawn(image, widgetOf(*control)).strongest(), TextContrast);
        for (const auto lamps : {&controls.SquareLamp, &controls.RoundLamp}) {
            for (int dark : {0, 2}) {
                const Drawn unlit(image, widgetOf((*lamps)[dark]));
                const Drawn lit(image, widgetOf((*lamps)[dark + 1]));
                EXPECT_GE(unlit.strongest(), ShapeContrast) << dark;
                EXPECT_GE(lit.strongest(), ShapeContrast) << dark;
                EXPECT_GT(lit.filled(), 1.8 * unlit.filled()) << dark;
            }
        }
        closeAll();
    }
}

TEST(LampPictures, DifferByLampAndByState) {
    std::vector<QImage> pictures;
    for (int number = 1; number <= 6; ++number) {
        const QImage picture = lampPicture(number).pixmap(32).toImage();
        for (const QImage& other : pictures) EXPECT_NE(picture, other) << number;
        pictures.push_back(picture);
    }
    EXPECT_TRUE(lampPicture(0).isNull());
    EXPECT_TRUE(lampPicture(7).isNull());
}

}  // namespace
}  // namespace kestrel::qt::testing
