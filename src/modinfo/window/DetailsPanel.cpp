#include "modinfo/window/DetailsPanel.h"

#include "common/modMisc.h"
#include "common/window/CutLabel.h"
#include "common/window/LoadPicture.h"
#include "common/window/QtText.h"
#include "common/window/UpdateLock.h"
#include "modinfo/ModDetails.h"

#include <QAction>
#include <QLabel>
#include <QLocale>
#include <QPixmap>

#include <algorithm>

namespace quillbay {

namespace {

constexpr char kNoModSelected[] = "(No mod selected)";
constexpr char kOtherHeading[] = "Other: ";

QString SizeCaption(const std::optional<std::uint64_t>& size) {
    const std::string mark = FromQString(QLocale().decimalPoint());
    return QStringLiteral("Size of current mod: ") +
           (size ? ToQString(FormatSize(*size, mark)) : QStringLiteral("N/A"));
}

QString FileCountCaption(const std::optional<std::size_t>& count) {
    return QStringLiteral("Number of files in current mod: ") +
           (count ? QString::number(*count) : QStringLiteral("N/A"));
}

/// The last of these files that decodes as a bitmap or JPEG (by content), cut to the picture area; null when
/// none does.
QPixmap LoadModPicture(const FileSystem& files, const std::vector<std::string>& paths) {
    for (auto path = paths.rbegin(); path != paths.rend(); ++path) {
        const QImage image = LoadPicture(files, *path, {"bmp", "jpeg"});
        if (image.isNull()) continue;
        return QPixmap::fromImage(image.copy(0, 0, std::min(image.width(), DetailsPanel::kPictureWidth),
                                             std::min(image.height(), DetailsPanel::kPictureHeight)));
    }
    return {};
}

} // namespace

void DetailsPanel::ShowBeforeStart() {
    SetCaptions(MakeModInfoCaptions(std::nullopt));
    controls_.fileCount.setText(QStringLiteral("Number of files in current mod:"));
}

void DetailsPanel::ShowNoMod() {
    SetCaptions({kNoModSelected, kNoModSelected, kNoModSelected, kNoModSelected, kOtherHeading});
    controls_.fileCount.setText(FileCountCaption(std::nullopt));
    controls_.size.setText(QStringLiteral("Size of current mod: ") + QLatin1String(kNoModSelected));
    shownFileCount_.reset();
}

void DetailsPanel::ShowMod(std::string_view folder) {
    const ModDetails details = ReadModDetails(files_, folder);
    const UpdateLock lock(*controls_.author.window());
    controls_.readmeItem.setEnabled(details.hasReadme);
    layOut_(details.hasPicture);
    shownFileCount_ = details.fileCount;
    controls_.size.setText(SizeCaption(details.size));
    controls_.fileCount.setText(FileCountCaption(details.fileCount));
    if (details.hasPicture)
        ShowPicture(details.pictures);
    else
        HidePicture();
    SetCaptions(details.captions);
}

void DetailsPanel::SetCaptions(const ModInfoCaptions& captions) {
    shown_ = captions;
    controls_.author.ShowText(ToQString(captions.author));
    controls_.version.ShowText(ToQString(captions.version));
    controls_.otherHeading.ShowText(ToQString(captions.otherHeading));
    controls_.description.setText(ToQString(captions.description));
    controls_.other.setText(ToQString(captions.other));
}

void DetailsPanel::ShowPicture(const std::vector<std::string>& paths) {
    const QPixmap picture = LoadModPicture(files_, paths);
    controls_.picture.setPixmap(picture);
    // An area that holds no picture is one line high and leaves its place to the message.
    controls_.picture.resize(kPictureWidth, picture.isNull() ? 1 : kPictureHeight);
    controls_.picture.show();
    controls_.invalidPicture.setVisible(picture.isNull());
}

void DetailsPanel::HidePicture() {
    controls_.invalidPicture.hide();
    controls_.picture.clear();
    controls_.picture.resize(kPictureWidth, kPictureHeight);
    controls_.picture.hide();
}

} // namespace quillbay
