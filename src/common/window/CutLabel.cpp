#include "common/window/CutLabel.h"

#include "common/window/PlainToolTip.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace quillbay {

namespace {

constexpr qsizetype kLongestToolTip = 8000; ///< characters
constexpr QChar kEllipsis(0x2026);

} // namespace

void CutLabel::ShowText(const QString& text, const QString& toolTip) {
    setText(text);
    ownToolTip_ = toolTip;
    FitToolTip();
}

bool CutLabel::IsCut() const {
    const int width = fontMetrics().size(Qt::TextSingleLine | MnemonicFlag(), text()).width();
    return text().contains(u'\n') || width > contentsRect().width();
}

void CutLabel::FitToolTip() {
    const QString whole = IsCut() ? text() : QString();
    setToolTip(PlainToolTip(ownToolTip_.isEmpty() ? whole : ownToolTip_, kLongestToolTip));
}

void CutLabel::paintEvent(QPaintEvent* event) {
    if (!IsCut()) return QLabel::paintEvent(event);
    QPainter painter(this);
    drawFrame(&painter);
    QString line = text().section(u'\n', 0, 0);
    if (line.size() < text().size()) line += kEllipsis;
    const QRect place = contentsRect();
    style()->drawItemText(
        &painter, place, static_cast<int>(alignment()) | Qt::TextSingleLine | MnemonicFlag(), palette(),
        isEnabled(), fontMetrics().elidedText(line, Qt::ElideRight, place.width(), MnemonicFlag()),
        foregroundRole());
}

void CutLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    FitToolTip();
}

void CutLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FitToolTip();
}

} // namespace quillbay
