#pragma once

#include <QFileDialog>

namespace quillbay {

/// Qt's own file dialog in the form that gives a folder, and can make one, but takes an existing file as
/// well. The system's dialogs, and Qt's other modes, give either folders or files.
class FolderOrFileDialog : public QFileDialog {
    Q_OBJECT

public:
    /// `filterName` is shown as the only filter, which leaves nothing out.
    FolderOrFileDialog(QWidget* parent, const QString& title, const QString& startFolder,
                       const QString& filterName);

    /// The full path with the system's separators; empty when there is none.
    QString ChosenPath() const;

public slots:
    void accept() override;

private:
    bool ChoseFile() const;
};

} // namespace quillbay
