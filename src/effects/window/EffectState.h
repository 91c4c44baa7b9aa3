#pragma once

#include <QObject>
#include <QSize>
#include <QString>

#include <optional>

class QWidget;

namespace quillbay {

/// What the effects remember of a window, a child of it: which effect is the newest, and what a shrinking
/// window gets back. It gives everything back by itself when the window is hidden.
class EffectState : public QObject {
    Q_OBJECT

public:
    /// The state of a window, made at first use.
    static EffectState& Of(QWidget& window);

    /// The number of a new effect; older ones end when they see that theirs is no longer the newest.
    unsigned Begin() { return ++newest_; }
    bool IsNewest(unsigned effect) const { return effect == newest_; }

    /// Appends " - Closing" to the caption until RestoreCaption.
    void MarkCaption();
    void RestoreCaption();

    /// Lets the window take any size, with its controls staying in place, until RestoreSize.
    void RelaxSize();
    void RestoreSize();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Sizes {
        QSize current;
        QSize minimum;
        QSize maximum;
        bool minimumIsOfLayout; ///< grows and shrinks with the fonts
    };

    explicit EffectState(QWidget& window);
    void GiveSizeBack();

    QWidget& window_;
    unsigned newest_ = 0;
    std::optional<QString> caption_;
    std::optional<Sizes> sizes_;
};

} // namespace quillbay
