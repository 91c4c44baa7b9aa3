#include "Driver.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeWidget>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace quillbay {

namespace {

constexpr std::chrono::minutes kPatience{1};
constexpr std::chrono::milliseconds kBetweenTries{5};

qint64 Now() { return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count(); }

void Reply(const QString& line) {
    std::fprintf(stdout, "%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

/// `NAME`, or `WINDOW/NAME` where several windows have an object of that name.
template <typename T>
T* Find(const QString& path) {
    const QString name = path.section('/', -1);
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (path.contains('/') && window->objectName() != path.section('/', 0, 0)) {
            continue;
        }
        if (auto* itself = qobject_cast<T*>(window); itself && window->objectName() == name) {
            return itself;
        }
        if (auto* child = window->findChild<T*>(name)) {
            return child;
        }
    }
    return nullptr;
}

/// The item with these texts from the top of the tree down.
QTreeWidgetItem* FindNode(const QTreeWidget& tree, const QStringList& texts) {
    QTreeWidgetItem* node = tree.invisibleRootItem();
    for (const QString& text : texts) {
        QTreeWidgetItem* found = nullptr;
        for (int at = 0; node && at < node->childCount(); ++at)
            if (node->child(at)->text(0) == text) found = node->child(at);
        node = found;
    }
    return node;
}

/// Visible, enabled, and not behind a modal window.
bool CanBeUsed(const QWidget* widget) {
    const QWidget* modal = QApplication::activeModalWidget();
    return widget && widget->isVisible() && widget->isEnabled() && (!modal || modal == widget->window());
}

void PressAt(QWidget* widget, QPoint place) {
    const QPointF local = place;
    const QPointF global = widget->mapToGlobal(local);
    QMouseEvent press(QEvent::MouseButtonPress, local, global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, local, global, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(widget, &release);
}

} // namespace

Driver::Driver() : input_(STDIN_FILENO, QSocketNotifier::Read) {
    input_.setEnabled(false);
    connect(&input_, &QSocketNotifier::activated, this, [this] { ReadInput(); });
    qApp->installEventFilter(this);
    QTimer::singleShot(0, this, &Driver::Step);
}

bool Driver::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint || event->type() == QEvent::WindowTitleChange) {
        if (const auto* widget = qobject_cast<QWidget*>(watched); widget && widget->isWindow()) {
            if (event->type() == QEvent::Paint) {
                painted_.insert(widget);
            }
            if (painted_.contains(widget) && !titledAt_.contains(widget->windowTitle())) {
                titledAt_.insert(widget->windowTitle(), Now());
            }
        }
    } else if (event->type() == QEvent::Close) {
        painted_.remove(watched);
    }
    return false;
}

void Driver::ReadInput() {
    char buffer[4096];
    const auto count = ::read(STDIN_FILENO, buffer, sizeof buffer);
    input_.setEnabled(false);
    if (count <= 0) {
        ended_ = true;
        return;
    }
    unread_.append(buffer, static_cast<int>(count));
    Step();
}

void Driver::Step() {
    if (!command_) {
        const auto end = unread_.indexOf('\n');
        if (end < 0) {
            input_.setEnabled(!ended_);
            return;
        }
        command_ = QString::fromUtf8(unread_.left(end));
        unread_.remove(0, end + 1);
        givenUpAt_ = std::chrono::steady_clock::now() + kPatience;
    }
    // A box that was answered is there until its loop has ended; only then does the work begin.
    const Try outcome = answered_ ? Try{} : Carry(*command_);
    if (!outcome) {
        if (std::chrono::steady_clock::now() > givenUpAt_) {
            Reply("failed: " + *command_);
            std::_Exit(70);
        }
        QTimer::singleShot(kBetweenTries, this, &Driver::Step);
        return;
    }
    Reply("ok " + *command_ + "\t" + outcome->value);
    command_.reset();
    QTimer::singleShot(0, this, &Driver::Step);
    if (outcome->act) {
        outcome->act();
    }
}

Driver::Try Driver::Carry(const QString& line) {
    static const QHash<QString, Try (Driver::*)(const QStringList&)> commands = {
        {"title", &Driver::Title},     {"select", &Driver::Select}, {"click", &Driver::Click},
        {"trigger", &Driver::Trigger}, {"answer", &Driver::Answer}, {"await", &Driver::Await},
        {"grab", &Driver::Grab},       {"screen", &Driver::Screen}, {"timer", &Driver::Timer},
        {"peak", &Driver::Peak},       {"close", &Driver::Close},   {"type", &Driver::Type},
        {"write", &Driver::Write},
    };
    const auto command = commands.constFind(line.section(' ', 0, 0));
    if (command == commands.cend()) {
        return {};
    }
    QStringList arguments = line.section(' ', 1).split('|');
    arguments.resize(3);
    return (this->*command.value())(arguments);
}

Driver::Try Driver::Title(const QStringList& arguments) {
    const auto moment = titledAt_.constFind(arguments[0]);
    if (moment == titledAt_.cend()) {
        return {};
    }
    return Outcome{QString::number(moment.value()), {}};
}

Driver::Try Driver::Select(const QStringList& arguments) {
    if (auto* tree = Find<QTreeWidget>(arguments[0])) {
        auto* node = FindNode(*tree, arguments[1].split('/'));
        if (!CanBeUsed(tree) || !node) {
            return {};
        }
        tree->scrollToItem(node); // and opens what it lies in
        const QPoint place = tree->visualItemRect(node).center();
        return Outcome{{}, [tree, place] { PressAt(tree->viewport(), place); }};
    }
    auto* list = Find<QListWidget>(arguments[0]);
    if (!CanBeUsed(list)) {
        return {};
    }
    const auto items = list->findItems(arguments[1], Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (items.isEmpty()) {
        return {};
    }
    list->scrollToItem(items.first());
    const QPoint place = list->visualItemRect(items.first()).center();
    return Outcome{{}, [list, place] { PressAt(list->viewport(), place); }};
}

Driver::Try Driver::Click(const QStringList& arguments) {
    auto* widget = Find<QWidget>(arguments[0]);
    if (!CanBeUsed(widget)) {
        return {};
    }
    return Outcome{{}, [widget] { PressAt(widget, widget->rect().center()); }};
}

Driver::Try Driver::Trigger(const QStringList& arguments) {
    auto* action = Find<QAction>(arguments[0]);
    if (!action || !action->isEnabled() || QApplication::activeModalWidget()) {
        return {};
    }
    return Outcome{{}, [action] { action->trigger(); }};
}

Driver::Try Driver::Answer(const QStringList& arguments) {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || box->windowTitle() != arguments[0]) {
        return {};
    }
    for (QAbstractButton* button : box->buttons()) {
        if (button->text().remove('&') == arguments[1]) {
            answered_ = box;
            return Outcome{box->text().replace('\n', ' '),
                           [button] { PressAt(button, button->rect().center()); }};
        }
    }
    return {};
}

Driver::Try Driver::Type(const QStringList& arguments) {
    auto* box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
    if (!box || box->windowTitle() != arguments[0]) {
        return {};
    }
    return Outcome{{}, [box, text = arguments[1]] {
                       box->setTextValue(text);
                       box->accept();
                   }};
}

Driver::Try Driver::Write(const QStringList& arguments) {
    auto* box = Find<QLineEdit>(arguments[0]);
    if (!CanBeUsed(box)) {
        return {};
    }
    return Outcome{{}, [box, text = arguments[1]] { box->setText(text); }};
}

Driver::Try Driver::Await(const QStringList& arguments) {
    const auto* object = Find<QObject>(arguments[0]);
    if (!object || object->property(arguments[1].toLatin1().constData()).toString() != arguments[2]) {
        return {};
    }
    return Outcome{QString::number(Now()), {}};
}

Driver::Try Driver::Grab(const QStringList& arguments) {
    auto* widget = Find<QWidget>(arguments[0]);
    if (!widget || !widget->isVisible() || !widget->grab().save(arguments[1])) {
        return {};
    }
    return Outcome{};
}

Driver::Try Driver::Screen(const QStringList& arguments) {
    if (!QApplication::primaryScreen()->grabWindow(0).save(arguments[0])) {
        return {};
    }
    return Outcome{};
}

Driver::Try Driver::Timer(const QStringList& arguments) {
    auto* timer = Find<QTimer>(arguments[0]);
    if (!timer) {
        return {};
    }
    const qint64 before = Now();
    QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection);
    return Outcome{QString::number(Now() - before), {}};
}

Driver::Try Driver::Peak(const QStringList&) {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) {
        return {};
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return Outcome{QString::fromLatin1(line.mid(6).simplified().split(' ').first()), {}};
        }
    }
    return {};
}

Driver::Try Driver::Close(const QStringList& arguments) {
    auto* window = Find<QWidget>(arguments[0]);
    if (!CanBeUsed(window)) {
        return {};
    }
    return Outcome{{}, [window] { window->close(); }};
}

} // namespace quillbay
