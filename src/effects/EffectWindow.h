#pragma once

#include <QPointer>
#include <QWidget>

class QAction;

namespace quillbay {

class EffectHost;

/// Base of every window but the main one: takes the main window's icon, opens modeless with ShowWithFade and
/// a check mark at its menu item, closes with SmoothClose and FadeOut and clears the mark. It lives as long
/// as the main window and is opened again and again.
class EffectWindow : public QWidget {
    Q_OBJECT

public:
    /// `menuItem` gets the check mark; null for a window without one.
    EffectWindow(EffectHost& host, QAction* menuItem);

    /// Sets the check mark, runs Form_Load and shows the window; brings it to the front when it is open.
    void Open();

protected:
    /// The window's load step, before it is shown.
    virtual void Form_Load() {}
    /// The window became the active one.
    virtual void Form_Activate() {}

    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

    EffectHost& Host() { return host_; }

private:
    EffectHost& host_;
    QPointer<QAction> menuItem_;
    bool closing_ = false;
};

} // namespace quillbay
