// Shows the status bar.
#include "qt/window/status_bar_view.h"

#include <QLabel>
#include <array>

#include "platform/window.h"
#include "qt/io/text.h"
#include "qt/style/palette.h"
#include "qt/views/lamp_pictures.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int LampKinds = 3;
/// Pictures 1 to 3 are the lamps off, 4 to 6 the same lamps on.
QString lampName(int picture) {
    constexpr std::array<Word, LampKinds> Names = {Word::SendLamp, Word::ReceiveLamp, Word::ErrorLamp};
    return word(Names[static_cast<std::size_t>((picture - 1) % LampKinds)]);
}

QString lampState(int picture) { return word(picture > LampKinds ? Word::On : Word::Off); }

Qt::Alignment alignmentOf(const StatusPanel& panel) {
    switch (panel.alignment) {
        case StatusPanel::Alignment::Center:
            return Qt::AlignCenter;
        case StatusPanel::Alignment::Right:
            return Qt::AlignRight | Qt::AlignVCenter;
        case StatusPanel::Alignment::Left:
            break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

}  // namespace

class StatusPanelView : public ControlView {
  public:
    StatusPanelView(StatusPanel& model, QStatusBar& bar) : model_(model), label_(new QLabel(&bar)) {
        label_->setTextFormat(Qt::PlainText);
        label_->setAlignment(alignmentOf(model));
        label_->setMinimumWidth(model.minWidth / TwipsPerPixel);
        bar.addPermanentWidget(label_, model.sizing == StatusPanel::Sizing::Spring ? 1 : 0);
        model.bind(this);
        controlChanged();
    }
    ~StatusPanelView() override {
        model_.unbind(this);
        delete label_;
    }

    void controlChanged() override {
        if (model_.Picture > 0)
            showLamp(model_.Picture);
        else
            showText();
    }

    void nameLamp() {
        if (shownPicture_ == 0) return;
        label_->setToolTip(lampName(shownPicture_));
        label_->setAccessibleName(lampName(shownPicture_));
        label_->setAccessibleDescription(lampState(shownPicture_));
    }

  private:
    void showText() {
        const QString text = toQt(model_.Text);
        if (label_->text() != text) label_->setText(text);
        label_->setToolTip(toQt(model_.ToolTip));
    }
    void showLamp(int picture) {
        if (picture == shownPicture_) return;
        shownPicture_ = picture;
        // On its own ground: an alarm takes the colour of the bar.
        QPalette ground = label_->palette();
        ground.setColor(QPalette::Window, colors().window);
        label_->setPalette(ground);
        label_->setAutoFillBackground(true);
        const int side = label_->fontMetrics().height() * 3 / 2;  // to be read at arm's length
        label_->setPixmap(lampPicture(picture).pixmap(QSize(side, side), label_->devicePixelRatioF()));
        nameLamp();
    }

    StatusPanel& model_;
    QLabel* label_;
    int shownPicture_ = 0;
};

/// Trouble takes the whole width of the bar, in a colour and with a sign that nothing else has.
class LineStatusView : public ControlView {
  public:
    LineStatusView(LineStatus& model, QStatusBar& bar, std::function<void()> changed)
        : model_(model), bar_(bar), label_(new QLabel(&bar)), changed_(std::move(changed)) {
        label_->setTextFormat(Qt::PlainText);
        label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        bar.addWidget(label_, LineShare);
        bar.setAutoFillBackground(true);
        model.bind(this);
    }
    ~LineStatusView() override {
        model_.unbind(this);
        delete label_;
    }

    void controlChanged() override {
        const QString text = toQt(model_.text());
        const bool isAlarm = !model_.Alarm.get().empty();
        label_->setText(isAlarm ? QStringLiteral("⚠  ") + text : text);
        label_->setToolTip(toQt(model_.Text));
        label_->setAccessibleName(text);
        if (isAlarm != isAlarm_) colour(isAlarm);
        changed_();
    }

  private:
    static constexpr int LineShare = 2;

    void colour(bool isAlarm) {
        isAlarm_ = isAlarm;
        QPalette palette;
        if (isAlarm) {
            palette.setColor(QPalette::Window, colors().alarm);
            palette.setColor(QPalette::WindowText, colors().field);
        }
        bar_.setPalette(palette);
        QFont font = bar_.font();
        font.setBold(isAlarm);
        label_->setFont(font);
    }

    LineStatus& model_;
    QStatusBar& bar_;
    QLabel* label_;
    std::function<void()> changed_;
    bool isAlarm_ = false;
};

StatusBarView::StatusBarView(StatusBar& model, LineStatus& line, QStatusBar& bar, std::function<void()> lineChanged)
    : model_(model), bar_(bar), line_(std::make_unique<LineStatusView>(line, bar, std::move(lineChanged))) {
    model.bind(this);
    rebuild();
}

StatusBarView::~StatusBarView() { model_.unbind(this); }

/// The panels are laid out when the program has finished setting them up.
void StatusBarView::controlChanged() {
    if (isStale_) return;
    isStale_ = true;
    QMetaObject::invokeMethod(
        &context_, [this] { bringUpToDate(); }, Qt::QueuedConnection);
}

void StatusBarView::bringUpToDate() {
    if (isStale_) rebuild();
}

void StatusBarView::renamed() {
    for (const auto& panel : panels_) panel->nameLamp();
}

void StatusBarView::rebuild() {
    isStale_ = false;
    panels_.clear();
    for (int number = 1; number <= model_.count(); ++number)
        panels_.push_back(std::make_unique<StatusPanelView>(model_.Panels(number), bar_));
}

}  // namespace kestrel::qt
