#pragma once

#include <QPointer>
#include <QWidget>

#include <optional>

class QAction;

namespace quillbay {

class EffectHost;

/// Base of every window but the main one: takes the main window's icon, opens modeless with ShowWithFade and
/// a check mark at its menu item, closes with RunClosingEffects and clears the mark. It is opened again
/// and again, where it was closed, or on a screen that exists. It has no Qt parent, so that the main window
/// can lie above it: its owner, the main window, destroys it.
class EffectWindow : public QWidget {
    Q_OBJECT

public:
    /// `menuItem` gets the check mark; null for a window without one.
    EffectWindow(EffectHost& host, QAction* menuItem);

    /// Sets the check mark, runs Form_Load and shows the window; brings it to the front when it is open. A
    /// window that is just closing is loaded and shown anew. Does nothing once the program is closing.
    void Open();

    /// Whether the window may close, or the program end: a window with unsaved work asks the user.
    virtual bool Form_QueryUnload() { return true; }

signals:
    /// The closing effects are over and the window is hidden.
    void Closed();

protected:
    /// The window's load step, before it is shown.
    virtual void Form_Load() {}
    /// What a window does once it can be seen; the opening effect is over.
    virtual void Form_Shown() {}
    /// The window was asked to open while it was open already.
    virtual void Form_OpenedAgain() {}
    /// The window became the active one.
    virtual void Form_Activate() {}

    /// What is seen while the window closes: SmoothClose, then FadeOut. It may be opened again or destroyed
    /// meanwhile.
    virtual void RunClosingEffects();

    /// Refuses the event; if Form_QueryUnload allows it, runs the closing effects from the event loop and
    /// closes the window then: Qt delivers no second closing, as after a reopening, from inside this handler.
    void closeEvent(QCloseEvent* event) override;
    /// Enter presses the button that has the focus; Escape closes the window.
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

    EffectHost& Host() { return host_; }

    /// Which opening of the window this is: what lets events run is overtaken when it changes.
    unsigned Opening() const { return opening_; }
    /// From the moment it may close until it is hidden or opened again.
    bool IsClosing() const { return closing_; }
    void BringToFront();

    /// A length of the form at the window's font: longer where the font is larger than the usual one.
    int AtFont(int pixels) const;

private:
    /// Once: the size in the form is meant for the usual font.
    void GrowWithFont();
    void MarkMenuItem(bool marked);
    void CloseWithEffects(unsigned opening);

    EffectHost& host_;
    QPointer<QAction> menuItem_;
    std::optional<QPoint> place_; ///< of its frame, when it was closed last
    unsigned opening_ = 0;        ///< counts the openings, so that a closing knows whether it was overtaken
    bool closing_ = false;
    bool effectsDone_ = false;
};

} // namespace quillbay
