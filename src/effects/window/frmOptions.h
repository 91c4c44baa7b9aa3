#pragma once

#include "effects/window/EffectWindow.h"

#include <cstdint>
#include <memory>

class QSlider;

namespace quillbay {

namespace Ui {
class frmOptions;
}

class AppSettings;
struct Preference;

/// The check items of the Smooth closing submenu, which hold and store the switches.
struct SmoothClosingItems {
    QAction* xAxis;
    QAction* yAxis;
    QAction* simultaneous;
    QAction* mainWindowOnly;
};

/// Edits the effect settings and switches the automatic refresh; every change counts and is stored at once.
/// Its menu item has no check mark.
class frmOptions : public EffectWindow {
    Q_OBJECT

public:
    frmOptions(EffectHost& host, AppSettings& settings, const SmoothClosingItems& items);
    ~frmOptions() override;

    /// The main window's FadeIntensity when this window was opened.
    std::uint8_t IntensityAtLoad = 0;

protected:
    void Form_Load() override;
    /// Fades out without closing smoothly; then the other windows take on a changed intensity.
    void RunClosingEffects() override;

private:
    void chkAutoRefresh_Click(bool disabled);
    void sldFadeIntensity_Change(int value);
    void sldFadeSpeed_Change(int value);
    void cmdTest_Click();

    /// Nothing is stored by that.
    void LoadSlider(QSlider& slider, const Preference& preference);
    void ShowNumbers();

    AppSettings& settings_;
    std::unique_ptr<Ui::frmOptions> ui_;
    const SmoothClosingItems items_;
    bool following_ = false; ///< the window's opacity is on its way to the slider's position
    bool testing_ = false;
};

} // namespace quillbay
