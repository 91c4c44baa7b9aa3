#pragma once

#include "effects/window/EffectWindow.h"

#include <QTimer>

#include <memory>
#include <optional>
#include <string>

class QListWidget;

namespace quillbay {

namespace Ui {
class frmCompatability;
}

class ContentComparison;
class LibraryHost;
class OutcomeText;

/// Lists the files that two mods, or a mod and the game directory, have in common.
class frmCompatability : public EffectWindow {
    Q_OBJECT

public:
    frmCompatability(LibraryHost& main, QAction* menuItem);
    ~frmCompatability() override;

protected:
    void Form_Load() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Side {
        QString row;
        std::string folder; ///< empty for a row that stands for no mod

        /// The row without the blanks of an addon row.
        QString Name() const;
    };

    void cmdCheck_Click() { CheckCompatibility(); }
    void lstBox_DblClick() { CheckCompatibility(); }
    /// Enter
    void lstBox_KeyPress() { CheckCompatibility(); }
    void timAfter_Timer();

    /// Checks the selection and shows what the two sides have in common, or why that cannot be said.
    void CheckCompatibility();
    /// The side of the selected row, if there is one.
    std::optional<Side> SelectedSide(const QListWidget& list) const;
    /// Tells the user what is wrong with the selection, if anything.
    bool CanCompare(const std::optional<Side>& first, const std::optional<Side>& second);
    /// Fills the result; the description of the error, without a full stop, when there is one.
    QString ListCommonFiles(const Side& first, const Side& second);
    void LockResult();
    /// Goes on comparing the bytes of the common files for a moment, then lets other events run; at the end
    /// says at the main window's foot how many there are and how many of them are equal.
    void CompareContents();
    OutcomeText DescribeContents() const;

    LibraryHost& main_;
    std::unique_ptr<Ui::frmCompatability> ui_;
    QTimer* timAfter_;
    QTimer* timContents_; ///< runs while bytes are compared
    QString comparedNames_;
    std::unique_ptr<ContentComparison> contents_; ///< of the result that is shown; null when it is told
};

} // namespace quillbay
