#include "modinfo/window/frmCompatability.h"

#include "common/window/BusyGuard.h"
#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "library/GameDirectory.h"
#include "library/ModRows.h"
#include "library/window/LibraryHost.h"
#include "modinfo/Compatibility.h"
#include "platform/PathText.h"
#include "ui_frmCompatability.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPointer>

namespace quillbay {

namespace {

constexpr std::size_t kMostFilesWithoutProgress = 150;
constexpr int kFinishAfterMs = 1;
constexpr qint64 kCompareForMs = 20; // at a time
constexpr int kNameIndent = 11;      // blanks, so that the second name stands below the first

constexpr QLatin1String kGameRow("(Tempest II Directory)");
constexpr QLatin1String kOutOfMemory("Out of memory");

/// The controls of a check that takes a while, for as long as it lives.
struct LongCheck {
    explicit LongCheck(Ui::frmCompatability& controls)
        : lists({controls.lstBox1, controls.lstBox2}), progress(*controls.pgbProgress) {}

    const BusyGuard lists;
    ShownProgress progress;
};

QString Describe(const ComparedFiles& files, const QString& name) {
    const auto& [path, error] = files.failure;
    if (error == std::errc::not_enough_memory) return kOutOfMemory;
    if (files.tooMany) return name + QStringLiteral(" has more than 10,000 files, too many to be compared");
    if (path == kGameNotFound) return QStringLiteral("The Tempest II directory was not found");
    return (path.empty() ? name : ToQString(path)) + QStringLiteral(" cannot be read: ") + Reason(error);
}

QString ErrorText(const QString& description) {
    QString text = QStringLiteral("Error: ") + description + u'.';
    if (description == kOutOfMemory)
        text += QStringLiteral(" Please select two smaller mods or put the larger mod in the second box.");
    return text;
}

void Fill(QListWidget& list, const std::vector<ModRow>& rows) {
    list.clear();
    list.addItem(kGameRow);
    for (const ModRow& row : rows) {
        auto* item = new QListWidgetItem(ToQString(row.text), &list);
        item->setData(Qt::UserRole, ToQString(row.path.text));
    }
}

void SelectMod(QListWidget& list, const ModPath& path) {
    const QString wanted = ToQString(path.text);
    for (int row = 0; row < list.count() && !wanted.isEmpty(); ++row)
        if (list.item(row)->data(Qt::UserRole).toString() == wanted) return list.setCurrentRow(row);
}

} // namespace

frmCompatability::frmCompatability(LibraryHost& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmCompatability>()),
      timAfter_(new QTimer(this)), timContents_(new QTimer(this)) {
    ui_->setupUi(this);
    timAfter_->setObjectName(QStringLiteral("timAfter"));
    timAfter_->setSingleShot(true);
    timAfter_->setInterval(kFinishAfterMs);
    connect(timAfter_, &QTimer::timeout, this, &frmCompatability::timAfter_Timer);
    connect(ui_->cmdCheck, &QPushButton::clicked, this, &frmCompatability::cmdCheck_Click);
    for (QListWidget* list : {ui_->lstBox1, ui_->lstBox2}) {
        connect(list, &QListWidget::itemDoubleClicked, this, &frmCompatability::lstBox_DblClick);
        list->installEventFilter(this);
    }
    timContents_->setObjectName(QStringLiteral("timContents"));
    connect(timContents_, &QTimer::timeout, this, &frmCompatability::CompareContents);
    ui_->pgbProgress->hide();
    LockResult();
}

frmCompatability::~frmCompatability() = default;

void frmCompatability::Form_Load() {
    const auto rows =
        ScanModLibrary(main_.GetServices().files, LibraryFolder(main_.ProgramDirectory), ModOrder::AsListed);
    Fill(*ui_->lstBox1, rows);
    Fill(*ui_->lstBox2, rows);
    if (const auto selected = main_.SelectedMod()) SelectMod(*ui_->lstBox1, selected->path);
}

bool frmCompatability::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& press = static_cast<const QKeyEvent&>(*event);
        if (press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter) {
            // A key that is held down must not close the message that it has just raised.
            if (!press.isAutoRepeat()) lstBox_KeyPress();
            return true;
        }
    }
    return EffectWindow::eventFilter(watched, event);
}

void frmCompatability::CheckCompatibility() {
    const auto first = SelectedSide(*ui_->lstBox1);
    const auto second = SelectedSide(*ui_->lstBox2);
    if (!CanCompare(first, second)) return;

    timAfter_->stop();
    timContents_->stop();
    contents_.reset();
    const QPointer<QWidget> focus = focusWidget();
    QString error;
    {
        const BusyGuard busy({ui_->cmdCheck});
        ui_->lblMod1->ShowText(QStringLiteral("Mods: ") + first->Name() + QStringLiteral(" and"),
                               ShownPath(first->folder));
        ui_->lblMod2->ShowText(QString(kNameIndent, u' ') + second->Name(), ShownPath(second->folder));
        ui_->lstIncompatable->setReadOnly(false);
        error = ListCommonFiles(*first, *second);
    }
    if (error.isEmpty()) {
        timAfter_->start();
        return;
    }
    ui_->lstIncompatable->clear();
    LockResult();
    if (focus) focus->setFocus();
    ShowError(this, ErrorText(error));
}

QString frmCompatability::Side::Name() const { return ToQString(DisplayName(FromQString(row))); }

std::optional<frmCompatability::Side> frmCompatability::SelectedSide(const QListWidget& list) const {
    const auto selected = list.selectedItems();
    if (selected.isEmpty()) return std::nullopt;
    const QListWidgetItem& item = *selected.front();
    const QVariant path = item.data(Qt::UserRole);
    if (!path.isValid()) return Side{item.text(), main_.GameDirectory};
    const std::string mod = FromQString(path.toString());
    return Side{item.text(), mod.empty() ? std::string() : Join(LibraryFolder(main_.ProgramDirectory), mod)};
}

bool frmCompatability::CanCompare(const std::optional<Side>& first, const std::optional<Side>& second) {
    const auto refuse = [this](const char* text, const char* title) {
        ShowMessage(this, QLatin1String(text), QLatin1String(title), QMessageBox::Warning);
        return false;
    };
    if (!first && !second) return refuse("Please select two mods.", "Select two mods");
    if (!first) return refuse("Please select a mod in the first box.", "Select a mod");
    if (!second) return refuse("Please select a mod in the second box.", "Select a mod");
    if (first->row == second->row) return refuse("Please select two different mods.", "Same mod");
    return true;
}

QString frmCompatability::ListCommonFiles(const Side& first, const Side& second) {
    const FileSystem& files = main_.GetServices().files;
    QPlainTextEdit& result = *ui_->lstIncompatable;

    ComparedFiles firstFiles = ListComparedFiles(files, first.folder);
    if (!firstFiles.Usable()) return Describe(firstFiles, first.Name());
    std::optional<LongCheck> longCheck;
    if (firstFiles.paths.size() > kMostFilesWithoutProgress) {
        result.setPlainText(QStringLiteral("(Checking compatability.)"));
        longCheck.emplace(*ui_);
    }
    ComparedFiles secondFiles = ListComparedFiles(files, second.folder, kDescriptionFiles);
    if (!secondFiles.Usable()) return Describe(secondFiles, second.Name());

    result.setFocus();
    auto common =
        FindCommonPaths(firstFiles.paths, secondFiles.paths, [&](std::size_t done, std::size_t total) {
            if (longCheck) longCheck->progress.Set(done, total);
        });
    QStringList lines;
    for (const CommonPath& path : common)
        lines += ToQString(firstFiles.paths[path.first]);
    // In one go: appending line by line would lay the text out anew each time.
    result.setPlainText(lines.join(u'\n'));
    comparedNames_ = first.Name() + QStringLiteral(" and ") + second.Name();
    contents_ = std::make_unique<ContentComparison>(files, std::move(firstFiles), std::move(secondFiles),
                                                    std::move(common));
    return {};
}

void frmCompatability::timAfter_Timer() {
    if (ui_->lstIncompatable->document()->isEmpty())
        ui_->lstIncompatable->setPlainText(QStringLiteral("(Mods are compatable)"));
    LockResult();
    ui_->lstIncompatable->moveCursor(QTextCursor::Start);
    timContents_->start(0);
}

void frmCompatability::CompareContents() {
    const bool isFirst = contents_ && contents_->Equal() + contents_->Different().size() == 0;
    QElapsedTimer clock;
    clock.start();
    bool goesOn = contents_ != nullptr;
    while (goesOn && clock.elapsed() < kCompareForMs)
        goesOn = contents_->Step();
    if (goesOn) {
        if (isFirst)
            main_.ShowOutcome(OutcomeText(comparedNames_)
                                  .Phrase(QString::number(contents_->Common()), QStringLiteral(" in both"))
                                  .Phrase(QStringLiteral("they"), QStringLiteral(" are being compared")));
        return;
    }
    timContents_->stop();
    if (contents_) main_.ShowOutcome(DescribeContents());
    contents_.reset();
}

OutcomeText frmCompatability::DescribeContents() const {
    if (contents_->Common() == 0)
        return OutcomeText(comparedNames_ + QStringLiteral(" have no file in common"));
    OutcomeText outcome(comparedNames_);
    outcome.Phrase(QString::number(contents_->Common()), QStringLiteral(" in both"))
        .Phrase(QString::number(contents_->Equal()), QStringLiteral(" of them equal"))
        .Files(contents_->Unreadable(), QStringLiteral("could not be read"));
    const auto& different = contents_->Different();
    if (different.empty()) return outcome;
    return outcome.Note(QStringLiteral("%1 different:\n").arg(different.size()) +
                        OutcomeText::Names(different, OutcomeText::kMostNamedFiles, QStringLiteral("\n")));
}

void frmCompatability::LockResult() {
    ui_->lstIncompatable->setReadOnly(true);
    // A read-only box would show no caret and could not be read or copied with the keyboard alone.
    ui_->lstIncompatable->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

} // namespace quillbay
