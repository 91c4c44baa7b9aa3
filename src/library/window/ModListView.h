#pragma once

#include "common/Twips.h"
#include "library/ModRows.h"

#include <QElapsedTimer>
#include <QListWidget>

#include <optional>
#include <vector>

namespace quillbay {

/// The main window's mod list: one item a row, in the order of the rows, with the mod path in Qt::UserRole.
/// Installed mods are bold. Twenty-four rows fill its height. "Selected" is the highlighted row, which need
/// not be the toolkit's current one.
class ModListView : public QListWidget {
    Q_OBJECT

public:
    static constexpr int kShownRows = 24;
    /// Pixels at the standard font; rows grow with larger fonts.
    static constexpr int kStandardRowHeight = TwipsToPixels(225);

    explicit ModListView(QWidget* parent = nullptr);

    /// Shows these rows, or the placeholder when there are none. The selection stays on the mod of the same
    /// path, or goes to the first row, and the scroll position is kept; equal rows repaint nothing, and rows
    /// that only differ in being installed are not made anew. Emits no selection signal.
    void SetRows(const std::vector<ModRow>& rows);
    const std::vector<ModRow>& Rows() const { return rows_; }

    /// The selected row; for the placeholder its text with an empty path.
    std::optional<ModRow> SelectedRow() const;
    /// Selects the row of this mod; false when there is none.
    bool SelectPath(const ModPath& path);

    /// Type-ahead: selects the next mod or addon whose name begins so, else the next one with a word that
    /// does, letter case ignored. An empty text ends the search.
    void keyboardSearch(const QString& search) override;

    /// Pixels.
    int RowHeight() const { return rowHeight_; }
    /// The height at which kShownRows rows fill the list.
    int FullHeight() const { return kShownRows * rowHeight_ + 2 * frameWidth(); }

signals:
    /// Enter, or a double-click on a row.
    void InstallRequested();
    /// Backspace.
    void UninstallRequested();
    /// Right button or the keyboard's menu key; the row under the pointer is selected already.
    void MenuRequested(QPoint globalPosition);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Fill();
    /// Shows by its font, and says to screen readers, whether the mod of the row is installed.
    void MarkRow(int row);
    /// The next row from that one on whose name has `typed` at its beginning, or at that of a word; none: -1.
    int FindTyped(const QString& typed, int from, bool inWords) const;
    QString ToolTipOf(const QListWidgetItem& item) const;
    void FitRowsToFont();

    std::vector<ModRow> rows_;
    int rowHeight_ = 0;
    QString typed_; ///< by the keys of the running search
    QElapsedTimer typing_;
};

} // namespace quillbay
