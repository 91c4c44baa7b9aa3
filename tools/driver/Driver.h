#pragma once

#include <QHash>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QSocketNotifier>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

class QWidget;

namespace quillbay {

/// Reads commands from standard input, one a line, and answers each on standard output with one line:
/// `ok COMMAND`, a tab and a value. A command waits until it can be carried out (a button that is disabled,
/// a box that is not there yet); after a minute it says `failed: COMMAND` and ends the program with code 70.
///
///     title TEXT              a window with that title has been painted; value: when (monotonic ns)
///     select LIST|ROW         click the row with that text; of a tree: with these texts from its top, a /
///     between click WIDGET            press and release the left button on it trigger ACTION          choose
///     the menu item answer TITLE|BUTTON     press a button of the message box with that title; value: its
///     text type TITLE|TEXT         write into the input box with that title and confirm it write BOX|TEXT
///     write into a text box of one line await OBJECT|PROPERTY|VALUE     value: when it was so (monotonic ns)
///     grab WIDGET|FILE        picture of one window
///     screen FILE             picture of the whole screen
///     timer TIMER             let the timer fire now; value: how long its work took (ns)
///     peak                    value: the largest resident size so far (kB)
///     close WINDOW
///
/// Objects are named by their objectName, with `WINDOW/` before it where several windows have one of that
/// name.
class Driver : public QObject {
    Q_OBJECT

public:
    Driver();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What came of a try: nothing yet, or the answer and what to do after it was given (a click may run an
    /// event loop of its own and come back late).
    struct Outcome {
        QString value;
        std::function<void()> act;
    };
    using Try = std::optional<Outcome>;

    void Step();
    void ReadInput();
    Try Carry(const QString& line);

    Try Title(const QStringList& arguments);
    Try Select(const QStringList& arguments);
    Try Click(const QStringList& arguments);
    Try Trigger(const QStringList& arguments);
    Try Answer(const QStringList& arguments);
    Try Type(const QStringList& arguments);
    Try Write(const QStringList& arguments);
    Try Await(const QStringList& arguments);
    Try Grab(const QStringList& arguments);
    Try Screen(const QStringList& arguments);
    Try Timer(const QStringList& arguments);
    Try Peak(const QStringList& arguments);
    Try Close(const QStringList& arguments);

    QSocketNotifier input_;
    QByteArray unread_;
    bool ended_ = false;
    std::optional<QString> command_;
    std::chrono::steady_clock::time_point givenUpAt_;
    QPointer<QMessageBox> answered_; ///< until what it asked for has been done
    QSet<const QObject*> painted_;
    QHash<QString, qint64> titledAt_;
};

} // namespace quillbay
