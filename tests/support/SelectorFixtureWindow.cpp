#include "support/SelectorFixtureWindow.h"

#include "support/AnswerBoxesWindow.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

namespace quillbay::test {

std::error_code WatchedFiles::MakeFolder(std::string_view folder) {
    if (refuseFolders) return std::make_error_code(std::errc::no_space_on_device);
    return Base().MakeFolder(folder);
}

std::error_code WatchedFiles::RemoveFile(std::string_view file) {
    Tell();
    return Base().RemoveFile(file);
}

std::error_code WatchedFiles::Copy(std::string_view from, std::string_view to, CopyOptions options) {
    Tell();
    return Base().Copy(from, to, options);
}

std::error_code WatchedFiles::HardLink(std::string_view from, std::string_view to, bool replace) {
    Tell();
    return Base().HardLink(from, to, replace);
}

std::error_code WatchedFiles::Rename(std::string_view from, std::string_view to) {
    Tell();
    return Base().Rename(from, to);
}

Result<std::uint64_t> WatchedFiles::TreeSize(std::string_view folder) const {
    ++treeSizes;
    return Base().TreeSize(folder);
}

QString FakeSettings::GetAppSetting(const QString& section, const QString& key,
                                    const QString& fallback) const {
    const auto found = values.find(section + '/' + key);
    return found == values.end() ? fallback : found->second;
}

void FakeSettings::SaveAppSetting(const QString& section, const QString& key, const QString& value) {
    values[section + '/' + key] = value;
}

SelectorFixture::SelectorFixture() {
    Write("game/Tempest2.exe", "game");
    MakeFolder("program");
    registry.path = Path("game").toStdString();
}

SelectorFixture::~SelectorFixture() {
    window.reset();
    // The end of a program would otherwise close the message boxes of the next test.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
}

bool SelectorFixture::Start(FileSystem& withFiles) {
    window = std::make_unique<frmSelector>(
        Services{withFiles, registry, settings, shell, sound, Path("program").toStdString()});
    return window->Start();
}

void SelectorFixture::Write(const QString& relative, const QByteArray& bytes) const {
    MakeFolder(QFileInfo(relative).path());
    QFile file(Path(relative));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(relative);
    file.write(bytes);
}

void SelectorFixture::Respell(const QString& from, const QString& to) const {
    if (disk->Rename(Path(from).toStdString(), Path(to).toStdString())) ADD_FAILURE();
}

void SelectorFixture::MakeFolder(const QString& relative) const { QDir().mkpath(Path(relative)); }

QByteArray SelectorFixture::Read(const QString& relative) const {
    QFile file(Path(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

bool SelectorFixture::Exists(const QString& relative) const { return QFileInfo::exists(Path(relative)); }

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
    for (QWidget* opened : QApplication::topLevelWidgets())
        if (opened->objectName() == QLatin1String(name) && opened->isVisible()) return *opened;
    throw std::runtime_error(std::string("no window ") + name);
}

void SelectorFixture::Tick() const {
    auto& timer = Control<QTimer>("timRefreshModList");
    bool ticked = false;
    const auto seen = QObject::connect(&timer, &QTimer::timeout, qApp, [&] { ticked = true; });
    timer.start(0);
    EXPECT_TRUE(WaitFor([&] { return ticked; }));
    QObject::disconnect(seen);
}

} // namespace quillbay::test
