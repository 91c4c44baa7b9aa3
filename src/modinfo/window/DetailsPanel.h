#pragma once

#include "modinfo/ModDetails.h"

#include <QPixmap>

#include <cstddef>
#include <optional>

namespace quillbay {

namespace Ui {
class frmSelector;
}

/// The labels and the picture of the main window that tell about the selected mod.
class DetailsPanel {
public:
    explicit DetailsPanel(Ui::frmSelector& controls) : controls_(controls) {}

    /// What stands there until the first mod is shown.
    void ShowBeforeStart();
    /// Leaves the picture as it is.
    void ShowNoMod();
    /// `picture` may be null although the mod has one: it does not decode then.
    void Show(const ModDetails& details, const QPixmap& picture);

    const ModInfoCaptions& ShownCaptions() const { return shown_; }
    /// The number of files that the panel shows at the moment.
    std::optional<std::size_t> ShownFileCount() const { return shownFileCount_; }

private:
    void SetCaptions(const ModInfoCaptions& captions);
    void ShowPicture(const QPixmap& picture);
    void HidePicture();

    Ui::frmSelector& controls_;
    ModInfoCaptions shown_;
    std::optional<std::size_t> shownFileCount_;
};

} // namespace quillbay
