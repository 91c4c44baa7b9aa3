#pragma once

#include "modinfo/ModInfo.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QAction;
class QLabel;

namespace quillbay {

class CutLabel;
class FileSystem;

/// The main window's controls that tell about the selected mod.
struct DetailsControls {
    CutLabel& author;
    QLabel& description;
    CutLabel& version;
    CutLabel& otherHeading;
    QLabel& other;
    QLabel& fileCount;
    QLabel& size;
    QLabel& picture;
    QLabel& invalidPicture;
    QAction& readmeItem;
};

/// Shows the description, the picture and the size of a mod.
class DetailsPanel {
public:
    /// The picture area in pixels. A picture is drawn unscaled from its top left corner and cut to it.
    static constexpr int kPictureWidth = 457;
    static constexpr int kPictureHeight = 89;

    /// `layOut` gives the picture area its place in the window, or takes it away.
    DetailsPanel(const FileSystem& files, const DetailsControls& controls, std::function<void(bool)> layOut)
        : files_(files), controls_(controls), layOut_(std::move(layOut)) {}

    /// What stands there until the first mod is shown.
    void ShowBeforeStart();
    /// Leaves the picture as it is.
    void ShowNoMod();
    void ShowMod(std::string_view folder);

    const ModInfoCaptions& ShownCaptions() const { return shown_; }
    /// The number of files that the panel shows at the moment.
    std::optional<std::size_t> ShownFileCount() const { return shownFileCount_; }

private:
    void SetCaptions(const ModInfoCaptions& captions);
    /// The last one that decodes, or the message when none does.
    void ShowPicture(const std::vector<std::string>& paths);
    void HidePicture();

    const FileSystem& files_;
    const DetailsControls controls_;
    const std::function<void(bool)> layOut_;
    ModInfoCaptions shown_;
    std::optional<std::size_t> shownFileCount_;
};

} // namespace quillbay
