#pragma once

#include <QObject>

namespace quillbay {

/// While it lives, the windows paint and move as ever, but of what the user does they get nothing, and
/// no timer fires: for a long job that lets events run. Escape, or closing a window, asks the job to stop.
class OnlyEscape : public QObject {
    Q_OBJECT

public:
    OnlyEscape();

    bool IsStopped() const { return isStopped_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isStopped_ = false;
};

} // namespace quillbay
