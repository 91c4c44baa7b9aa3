#include "modinfo/window/DetailsPanel.h"

#include "common/modMisc.h"
#include "common/window/PlainToolTip.h"
#include "common/window/QtText.h"
#include "modinfo/window/ModPicture.h"
#include "ui_frmSelector.h"

#include <QLocale>

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

/// For labels of one line, whose text may be longer than they are wide.
void SetCutText(QLabel& label, const QString& text) {
    label.setText(text);
    const bool cut =
        text.contains(QLatin1Char('\n')) || label.fontMetrics().horizontalAdvance(text) > label.width();
    label.setToolTip(cut ? PlainToolTip(text) : QString());
}

} // namespace

void DetailsPanel::ShowBeforeStart() {
    SetCaptions(MakeModInfoCaptions(std::nullopt));
    controls_.lblModNumOfFiles->setText(QStringLiteral("Number of files in current mod:"));
}

void DetailsPanel::ShowNoMod() {
    SetCaptions({kNoModSelected, kNoModSelected, kNoModSelected, kNoModSelected, kOtherHeading});
    controls_.lblModNumOfFiles->setText(FileCountCaption(std::nullopt));
    controls_.lblModSize->setText(QStringLiteral("Size of current mod: ") + QLatin1String(kNoModSelected));
    shownFileCount_.reset();
}

void DetailsPanel::Show(const ModDetails& details, const QPixmap& picture) {
    shownFileCount_ = details.fileCount;
    controls_.lblModSize->setText(SizeCaption(details.size));
    controls_.lblModNumOfFiles->setText(FileCountCaption(details.fileCount));
    if (details.hasPicture) {
        ShowPicture(picture);
    } else {
        HidePicture();
    }
    SetCaptions(details.captions);
}

void DetailsPanel::SetCaptions(const ModInfoCaptions& captions) {
    shown_ = captions;
    SetCutText(*controls_.lblModsMaker, ToQString(captions.author));
    SetCutText(*controls_.lblModsVersion, ToQString(captions.version));
    SetCutText(*controls_.lblModsOtherHeading, ToQString(captions.otherHeading));
    controls_.lblModsDescription->setText(ToQString(captions.description));
    controls_.lblModsOther->setText(ToQString(captions.other));
}

void DetailsPanel::ShowPicture(const QPixmap& picture) {
    controls_.picModsPic->setPixmap(picture);
    // An area that holds no picture is one line high and leaves its place to the message.
    controls_.picModsPic->resize(kPictureWidth, picture.isNull() ? 1 : kPictureHeight);
    controls_.picModsPic->show();
    controls_.lblInvalidPic->setVisible(picture.isNull());
}

void DetailsPanel::HidePicture() {
    controls_.lblInvalidPic->hide();
    controls_.picModsPic->clear();
    controls_.picModsPic->resize(kPictureWidth, kPictureHeight);
    controls_.picModsPic->hide();
}

} // namespace quillbay
