#include "effects/window/frmOptions.h"

#include "common/window/AppSettings.h"
#include "effects/window/EffectHost.h"
#include "effects/window/WindowEffects.h"
#include "ui_frmOptions.h"

#include <QSignalBlocker>

#include <algorithm>

namespace quillbay {

namespace {

constexpr int kFollowStep = 1;
constexpr int kOthersStep = 7;

/// What a window that faded in to this intensity shows.
int ShownOpacity(std::uint8_t intensity) { return intensity == 0 ? 255 : intensity; }

/// The item stores what it is switched to.
void Mirror(QCheckBox& box, QAction& item) {
    QObject::connect(&item, &QAction::toggled, &box, &QCheckBox::setChecked);
    QObject::connect(&box, &QCheckBox::toggled, &item, [&item](bool on) {
        if (item.isChecked() != on) item.trigger();
    });
}

} // namespace

frmOptions::frmOptions(EffectHost& host, AppSettings& settings, const SmoothClosingItems& items)
    : EffectWindow(host, nullptr), settings_(settings), ui_(std::make_unique<Ui::frmOptions>()),
      items_(items) {
    ui_->setupUi(this);
    connect(ui_->chkAutoRefresh, &QCheckBox::toggled, this, &frmOptions::chkAutoRefresh_Click);
    Mirror(*ui_->chkXAxis, *items.xAxis);
    Mirror(*ui_->chkYAxis, *items.yAxis);
    Mirror(*ui_->chkSimultaneous, *items.simultaneous);
    Mirror(*ui_->chkMainWindowOnly, *items.mainWindowOnly);
    connect(ui_->sldFadeIntensity, &QSlider::valueChanged, this, &frmOptions::sldFadeIntensity_Change);
    connect(ui_->sldFadeSpeed, &QSlider::valueChanged, this, &frmOptions::sldFadeSpeed_Change);
    connect(ui_->cmdTest, &QPushButton::clicked, this, &frmOptions::cmdTest_Click);
}

frmOptions::~frmOptions() = default;

void frmOptions::Form_Load() {
    ui_->chkAutoRefresh->setChecked(!Host().AutoRefresh());
    ui_->chkXAxis->setChecked(items_.xAxis->isChecked());
    ui_->chkYAxis->setChecked(items_.yAxis->isChecked());
    ui_->chkSimultaneous->setChecked(items_.simultaneous->isChecked());
    ui_->chkMainWindowOnly->setChecked(items_.mainWindowOnly->isChecked());
    LoadSlider(*ui_->sldFadeIntensity, kFadeIntensityPreference);
    LoadSlider(*ui_->sldFadeSpeed, kFadeSpeedPreference);
    ShowNumbers();
    IntensityAtLoad = Host().FadeIntensity;
}

void frmOptions::LoadSlider(QSlider& slider, const Preference& preference) {
    const double number = ReadNumber(settings_, preference);
    const QSignalBlocker quiet(slider);
    slider.setValue(static_cast<int>(std::clamp<double>(number, slider.minimum(), slider.maximum())));
}

void frmOptions::chkAutoRefresh_Click(bool disabled) { Host().SetAutoRefresh(!disabled); }

void frmOptions::sldFadeIntensity_Change(int value) {
    int shown = ShownOpacity(Host().FadeIntensity);
    Host().FadeIntensity = static_cast<std::uint8_t>(value);
    SaveNumber(settings_, kFadeIntensityPreference, value);
    ShowNumbers();
    if (following_) return;

    const QPointer<frmOptions> self = this;
    following_ = true;
    while (self && isVisible() && shown != Host().FadeIntensity) {
        const int target = Host().FadeIntensity;
        FadeBetween(*this, shown, target, kFollowStep);
        shown = target;
    }
    if (self) following_ = false;
}

void frmOptions::sldFadeSpeed_Change(int value) {
    Host().FadeSpeed = static_cast<std::uint8_t>(value);
    SaveNumber(settings_, kFadeSpeedPreference, value);
    ShowNumbers();
}

void frmOptions::ShowNumbers() {
    ui_->lblFadeIntensity->setNum(ui_->sldFadeIntensity->value());
    ui_->lblFadeSpeed->setNum(ui_->sldFadeSpeed->value());
}

void frmOptions::cmdTest_Click() {
    if (testing_) return;
    const QPointer<frmOptions> self = this;
    testing_ = true;
    FadeOut(*this, Host());
    if (self && isVisible()) FadeIn(*this, Host(), Host().FadeIntensity);
    if (self) testing_ = false;
}

void frmOptions::RunClosingEffects() {
    const QPointer<frmOptions> self = this;
    // If this window were opened again meanwhile, it would forget which intensity the others show.
    const int shownByOthers = ShownOpacity(IntensityAtLoad);
    FadeOut(*this, Host());
    if (self)
        FadeOthersBetween(*this, Host(), shownByOthers, ShownOpacity(Host().FadeIntensity), kOthersStep);
}

} // namespace quillbay
