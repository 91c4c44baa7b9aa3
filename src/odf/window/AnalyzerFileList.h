#pragma once

#include <QListWidget>

namespace quillbay {

/// The analyzer's file list. Its row is the selected one, which need not be the toolkit's current one: a
/// button that goes down selects the row under the pointer, or none below the last row.
class AnalyzerFileList : public QListWidget {
    Q_OBJECT

public:
    explicit AnalyzerFileList(QWidget* parent = nullptr);

    /// The selected row; null for none.
    QListWidgetItem* SelectedItem() const;

signals:
    /// Another row was selected, or the selected row was clicked again.
    void RowClicked();
    /// Enter, or a double click on a row.
    void OpenRequested();
    /// Ctrl+C, Ctrl+V, Ctrl+D; once each time a key goes down.
    void CopyRequested();
    void PasteRequested();
    void RemoveRequested();
    /// A button went down and the row is selected. The keyboard's menu key counts as the right button.
    void MouseDown(Qt::MouseButton button, QPoint globalPosition);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
};

} // namespace quillbay
