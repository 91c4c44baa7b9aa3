#include "support/SelectorFixtureWindow.h"

#include "shell/window/frmSelector.h"

namespace quillbay::test {

QString Titles(const AnswerBoxes& boxes) {
    const QStringList icons{"", "i ", "! ", "X ", "? "};
    QStringList titles;
    for (const SeenBox& box : boxes.Seen())
        titles << icons.at(box.icon) + box.title;
    return titles.join('|');
}

SelectorFixture::SelectorFixture() {
    Write("game/Tempest2.exe", "game");
    MakeFolder("program");
    registry.path = Path("game").toStdString();
    files.hook = [this](auto operation, auto path, auto) {
        treeSizes += operation == "TreeSize";
        for (const char* change : {"RemoveFile", "RenameOver", "HardLink", "Copy"})
            if (operation.ends_with(change)) onChange();
        if (operation == "RemoveTree" && path.ends_with("~quillbay.bak")) onChange();
        return std::error_code();
    };
}

SelectorFixture::~SelectorFixture() { End(); }

void SelectorFixture::End() {
    window.reset();
    // The end of a program would otherwise close the message boxes of the next test.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
}

bool SelectorFixture::Start(FileSystem& withFiles) {
    auto made =
        std::make_unique<frmSelector>(Services{withFiles, registry, settings, shell, sound, OpenArchive,
                                               Path("program").toStdString(), startAsAdministrator});
    frmSelector& selector = *made;
    main = &selector;
    window = std::move(made);
    return selector.Start();
}

void SelectorFixture::Write(const QString& relative, const QByteArray& bytes) const {
    MakeFolder(QFileInfo(relative).path());
    QFile file(Path(relative));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(relative);
    file.write(bytes);
}

void SelectorFixture::Make(std::initializer_list<const char*> paths, const QString& folder) const {
    for (const QString path : paths)
        path.endsWith('/') ? MakeFolder(folder + path) : Write(folder + path, (folder + path).toUtf8());
}

void SelectorFixture::Respell(const QString& from, const QString& to) const {
    if (disk->Rename(Path(from).toStdString(), Path(to).toStdString())) ADD_FAILURE();
}

QByteArray SelectorFixture::Read(const QString& relative) const {
    QFile file(Path(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

QStringList SelectorFixture::Rows() const {
    QStringList rows;
    for (int row = 0; row < Mods().count(); ++row)
        rows << Mods().item(row)->text();
    return rows;
}

QString SelectorFixture::SelectedText() const {
    const auto items = Mods().selectedItems();
    return items.isEmpty() ? QString() : items.front()->text();
}

QWidget& SelectorFixture::OpenWindow(const char* item, const char* name) const {
    Item(item).trigger();
    for (QWidget* shown : QApplication::topLevelWidgets())
        if (shown->objectName() == QLatin1String(name) && shown->isVisible()) return *shown;
    throw std::runtime_error(std::string("no window ") + name);
}

bool SelectorFixture::Drop(const QList<QUrl>& dragged, Qt::DropActions offered) const {
    QMimeData data;
    data.setUrls(dragged);
    QDragEnterEvent enter({9, 9}, offered, &data, Qt::LeftButton, Qt::NoModifier);
    enter.setDropAction(Qt::MoveAction);
    enter.ignore();
    QCoreApplication::sendEvent(window.get(), &enter);
    if (!enter.isAccepted()) return false;
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    QDropEvent drop({9, 9}, offered, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.get(), &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    QCoreApplication::sendPostedEvents(); // the command runs after the drop
    return true;
}

void SelectorFixture::Tick() const {
    QMetaObject::invokeMethod(&Control<QTimer>("timRefreshModList"), "timeout");
}

} // namespace quillbay::test
