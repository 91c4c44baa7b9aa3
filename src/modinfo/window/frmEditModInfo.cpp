#include "modinfo/window/frmEditModInfo.h"

#include "common/window/OutcomeText.h"
#include "common/window/PlainToolTip.h"
#include "common/window/QtText.h"
#include "common/window/RawTextBox.h"
#include "common/window/ShowMessage.h"
#include "library/ModFiles.h"
#include "library/window/LibraryHost.h"
#include "modinfo/ModInfoWriter.h"
#include "modinfo/window/DetailsPanel.h"
#include "platform/PathText.h"
#include "ui_frmEditModInfo.h"

#include <QSignalBlocker>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace quillbay {

namespace {

std::string TextOf(const QLineEdit& box) { return RawTextBox::FileText(box.text()); }

/// How many lone line feeds a box was filled with: those that are pasted are line ends.
constexpr char kLineFeeds[] = "lineFeeds";

void SetText(QLineEdit& box, const std::string& text) {
    const QString shown = RawTextBox::ShownLine(text);
    box.setProperty(kLineFeeds, shown.count(QChar::LineSeparator));
    box.setText(shown);
}

void EndPastedLines(QLineEdit& box) {
    const QString text = box.text();
    if (text.count(QChar::LineSeparator) > box.property(kLineFeeds).toInt())
        box.setText(QString(text).replace(QChar::LineSeparator, u'\n'));
}

std::string TextOf(const RawTextBox& box) { return box.Text(); }

void SetText(RawTextBox& box, const std::string& text) { box.SetText(text); }

bool IsBlank(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

} // namespace

frmEditModInfo::frmEditModInfo(LibraryHost& main, const DetailsPanel& panel, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), panel_(panel), ui_(std::make_unique<Ui::frmEditModInfo>()) {
    ui_->setupUi(this);
    AddBox(*ui_->txtAuthor, *ui_->lblModsMaker, &ModInfoCaptions::author);
    AddBox(*ui_->txtDescription, *ui_->lblModsDescription, &ModInfoCaptions::description);
    AddBox(*ui_->txtVersion, *ui_->lblModsVersion, &ModInfoCaptions::version);
    AddBox(*ui_->txtOtherHeading, *ui_->lblModsOtherHeading, &ModInfoCaptions::otherHeading);
    AddBox(*ui_->txtOther, *ui_->lblModsOther, &ModInfoCaptions::other);
    for (QLineEdit* box : {ui_->txtAuthor, ui_->txtVersion, ui_->txtOtherHeading})
        connect(box, &QLineEdit::textEdited, this, [box] { EndPastedLines(*box); });
    connect(ui_->cboMod, &QComboBox::currentIndexChanged, this, &frmEditModInfo::cboMod_Click);
    connect(ui_->cmdMakeFile, &QPushButton::clicked, this, &frmEditModInfo::cmdMakeFile_Click);
    connect(ui_->cmdClear, &QPushButton::clicked, this, &frmEditModInfo::cmdClear_Click);
    connect(&main.Signals, &LibrarySignals::ModListRebuilt, this, &frmEditModInfo::FollowModList);
    connect(&main.Signals, &LibrarySignals::ModDetailsShown, this, &frmEditModInfo::FollowDetails);
}

frmEditModInfo::~frmEditModInfo() = default;

template <typename Box>
void frmEditModInfo::AddBox(Box& box, QLabel& preview, std::string ModInfoCaptions::*value) {
    const ValueBox added{value, &preview, [&box] { return TextOf(box); },
                         [&box](const std::string& text) { SetText(box, text); }};
    boxes_.push_back(added);
    connect(&box, &Box::textChanged, this, [this, added] { ShowPreview(added); });
}

void frmEditModInfo::Form_Load() {
    main_.ShowModDetails();
    followed_ = SelectedMod();
    const ModPath chosen = ChosenMod();
    const bool isEdited = Texts() != filled_;
    FillCombo();
    // What was typed stays, but not for a mod that is no longer the one in the main list.
    Choose(isEdited && chosen == followed_ ? chosen : ModPath{});
    if (!isEdited) FillBoxes({});
    ShowPreviews();
}

void frmEditModInfo::Form_OpenedAgain() { main_.ShowModDetails(); }

void frmEditModInfo::FollowModList() {
    if (!isVisible()) return;
    const ModPath chosen = ChosenMod();
    FillCombo();
    Choose(chosen);
}

void frmEditModInfo::FollowDetails() {
    if (!isVisible()) return;
    const ModPath before = std::exchange(followed_, SelectedMod());
    if (followed_.Empty()) {
        Choose({}); // no captions to take over, so the texts stay
        return;
    }
    if (followed_ != before) {
        const auto& rows = main_.ModRows();
        const bool isGone =
            std::none_of(rows.begin(), rows.end(), [&](const ModRow& row) { return row.path == before; });
        // The list selects another mod by itself when one goes: what was typed for that one stays then, and
        // must not be written for a mod that nobody chose.
        const bool keepTexts = isGone && Texts() != filled_;
        Choose(keepTexts ? ModPath{} : followed_);
        if (!keepTexts) FillBoxes(panel_.ShownCaptions());
    }
    ShowPreviews();
}

void frmEditModInfo::FillCombo() {
    const QSignalBlocker quiet(ui_->cboMod);
    ui_->cboMod->clear();
    std::unordered_set<std::string_view> known;
    for (const ModRow& row : main_.ModRows())
        known.insert(row.path.text);
    for (const ModRow& row : ScanModLibrary(main_.GetServices().files, LibraryFolder(main_.ProgramDirectory),
                                            ModOrder::AsListed)) {
        // What the main list does not have yet comes with its next refresh.
        if (row.path.Empty() || !known.contains(row.path.text)) continue;
        ui_->cboMod->addItem(ToQString(row.text), ToQString(row.path.text));
    }
}

void frmEditModInfo::Choose(const ModPath& mod) {
    const QSignalBlocker quiet(ui_->cboMod);
    ui_->cboMod->setCurrentIndex(mod.Empty() ? -1 : ui_->cboMod->findData(ToQString(mod.text)));
    NamePlace();
}

void frmEditModInfo::NamePlace() {
    const QString place = ui_->cboMod->currentData().toString();
    ui_->cboMod->setToolTip(PlainToolTip(place));
    const QString whyBlank = place.isEmpty()
                                 ? QStringLiteral("A click on a mod in the main window fills this")
                                 : QStringLiteral("The file will say nothing here");
    for (QLineEdit* box : {ui_->txtAuthor, ui_->txtVersion, ui_->txtOtherHeading})
        box->setPlaceholderText(whyBlank);
    for (RawTextBox* box : {ui_->txtDescription, ui_->txtOther})
        box->setPlaceholderText(whyBlank);
}

ModPath frmEditModInfo::ChosenMod() const { return {FromQString(ui_->cboMod->currentData().toString())}; }

ModPath frmEditModInfo::SelectedMod() const {
    const auto row = main_.SelectedMod();
    return row ? row->path : ModPath{};
}

void frmEditModInfo::cboMod_Click() {
    const ModPath mod = ChosenMod();
    if (mod.Empty()) return;
    NamePlace();
    // The texts stay: the panel that is filled now is that of the mod that is followed already.
    followed_ = mod;
    if (SelectedMod() == mod)
        main_.ShowModDetails();
    else
        main_.SelectMod(mod);
    activateWindow();
}

void frmEditModInfo::cmdClear_Click() {
    for (const ValueBox& box : boxes_)
        box.setText({});
}

void frmEditModInfo::cmdMakeFile_Click() {
    const ModPath mod = ChosenMod();
    if (mod.Empty()) {
        ShowMessage(this, QStringLiteral("Please select a mod."));
        return;
    }
    const ModInfoCaptions texts = Texts();
    FileSystem& files = main_.GetServices().files;
    const std::string folder = Join(LibraryFolder(main_.ProgramDirectory), mod.text);
    const auto old = FindModInfo(files, folder);
    if (!Confirmed(this, QStringLiteral("Are you sure you want to make the file?"),
                   QStringLiteral("Make file?"), QMessageBox::Question,
                   (old ? QStringLiteral("It replaces the whole of ") : QStringLiteral("It will be ")) +
                       ShownPath(old.value_or(Join(folder, kModInfoName))))) {
        return;
    }
    const ModInfoResult result = WriteModInfo(files, folder, texts);
    if (result.outcome != ModInfoOutcome::Written) {
        main_.ShowOutcome(OutcomeText(QStringLiteral("ModInfo.txt is as it was")));
        Report(result);
        return;
    }
    main_.ShowOutcome(OutcomeText(QStringLiteral("ModInfo.txt of ") + ui_->cboMod->currentText().trimmed() +
                                  QStringLiteral(" is written")));
    main_.ShowModDetails();
    filled_ = texts;
    if (SelectedMod() == mod) FillBoxes(panel_.ShownCaptions());
    activateWindow();
}

void frmEditModInfo::Report(const ModInfoResult& result) {
    QStringList fields;
    for (const std::string_view field : result.fields)
        fields += ToQString(field);
    QString text;
    switch (result.outcome) {
    case ModInfoOutcome::Written:
        return;
    case ModInfoOutcome::Unencodable:
        text = QStringLiteral("ModInfo.txt was not written, because it cannot hold this character: ") +
               ToQString(result.character);
        break;
    case ModInfoOutcome::TooLong:
        text = QStringLiteral("ModInfo.txt was not written, because this is too long to be shown whole: ") +
               fields.join(QStringLiteral(", "));
        break;
    case ModInfoOutcome::OldTooLong:
        text =
            QStringLiteral("ModInfo.txt was not written over, because it holds more text than can be shown "
                           "here. What is not shown of this would be lost: ") +
            fields.join(QStringLiteral(", "));
        break;
    case ModInfoOutcome::Failed:
        text = QStringLiteral("ModInfo.txt could not be written.\n\n") + Reason(result.error);
        break;
    }
    ShowError(this, text);
}

ModInfoCaptions frmEditModInfo::Texts() const {
    ModInfoCaptions texts;
    for (const ValueBox& box : boxes_)
        texts.*box.value = box.text();
    return texts;
}

void frmEditModInfo::FillBoxes(const ModInfoCaptions& captions) {
    for (const ValueBox& box : boxes_)
        box.setText(captions.*box.value);
    filled_ = Texts();
}

void frmEditModInfo::ShowPreview(const ValueBox& box) {
    const std::string text = box.text();
    box.preview->setText(ToQString(IsBlank(text) ? panel_.ShownCaptions().*box.value : text));
}

void frmEditModInfo::ShowPreviews() {
    for (const ValueBox& box : boxes_)
        ShowPreview(box);
}

} // namespace quillbay
