#include "help/window/frmReadme.h"

#include "common/window/QtText.h"
#include "library/window/LibraryHost.h"
#include "platform/FileSystem.h"
#include "platform/ShellOpener.h"
#include "ui_frmReadme.h"

#include <QScrollBar>

namespace quillbay {

frmReadme::frmReadme(LibraryHost& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmReadme>()),
      topics_(ReadmeTopics()) {
    ui_->setupUi(this);
    ui_->splTopics->setStretchFactor(1, 1);
    ui_->lblDisplay->setBackgroundRole(QPalette::Base);
    ui_->lblDisplay->setForegroundRole(QPalette::Text);
    ui_->lblEmail->setText(ToQString(kContactAddress));
    ui_->lblEmail->setForegroundRole(QPalette::Link);
    connect(ui_->lblEmail, &ClickLabel::Clicked, this, &frmReadme::lblEmail_Click);
    for (const ReadmeTopic& topic : topics_)
        ui_->lstChoices->addItem(ToQString(ReadmeRow(topic)));
    connect(ui_->lstChoices, &QListWidget::currentRowChanged, this, &frmReadme::lstChoices_Click);
}

frmReadme::~frmReadme() = default;

void frmReadme::Form_Load() {
    ui_->lstChoices->setCurrentRow(0);
    lstChoices_Click();
}

void frmReadme::lstChoices_Click() {
    const int row = ui_->lstChoices->currentRow();
    if (row < 0) return;
    const auto at = static_cast<std::size_t>(row);
    ui_->lblEmail->setVisible(at + 1 == topics_.size());
    ui_->lblDisplay->setText(ToQString(ReadmeText(topics_[at], main_.ProgramDirectory)));
    ui_->areaDisplay->verticalScrollBar()->setValue(0);
}

void frmReadme::lblEmail_Click() {
    // Without a mail program nothing happens; the address can still be copied.
    Ignore(main_.GetServices().shell.OpenWithShell("mailto:" + FromQString(ui_->lblEmail->text()), "C:\\"));
}

} // namespace quillbay
