#pragma once

#include <QLabel>

namespace quillbay {

/// A label of one line. A text that is wider than the label, or has more lines, is painted with an ellipsis
/// at its end and shown whole in the tool tip; `text()` is always the whole one.
class CutLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    /// To be used instead of setText, which leaves the tool tip as it is. `toolTip` is shown instead of the
    /// text, whether that is cut or not.
    void ShowText(const QString& text, const QString& toolTip = {});

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// How an & is drawn: without a buddy it is a character like any other.
    int MnemonicFlag() const { return buddy() ? Qt::TextShowMnemonic : 0; }
    bool IsCut() const;
    void FitToolTip();

    QString ownToolTip_;
};

} // namespace quillbay
