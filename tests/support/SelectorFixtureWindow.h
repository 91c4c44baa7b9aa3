#pragma once

#include "common/window/AppSettings.h"
#include "library/window/LibraryHost.h"
#include "platform/Registry.h"
#include "platform/ShellOpener.h"
#include "platform/SoundPlayer.h"
#include "support/AnswerBoxesWindow.h"
#include "support/FaultyFileSystem.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillbay::test {

class FakeRegistry : public Registry {
public:
    std::string path, prefix;
    bool otherPrefixes = false;
    std::string ReadRegistryString(std::string_view, std::string_view, std::string_view) const override {
        return path;
    }
    RegisteredFolder FindRegisteredFolder(std::string_view key, std::string_view name) const override {
        return {Registry::FindRegisteredFolder(key, name).path, prefix, otherPrefixes};
    }
};

class FakeSettings : public AppSettings {
public:
    std::map<QString, QString> values; ///< "section/key"
    QString GetAppSetting(const QString& section, const QString& key, const QString& other) const override {
        const auto found = values.find(section + '/' + key);
        return found == values.end() ? other : found->second;
    }
    void SaveAppSetting(const QString& section, const QString& key, const QString& value) override {
        values[section + '/' + key] = value;
    }
};

class FakeShell : public ShellOpener {
public:
    struct Opened {
        std::string target, workingFolder, prefix;
    };
    std::vector<Opened> opened;
    std::error_code answer;
    std::error_code OpenWithShell(std::string_view target, std::string_view workingFolder,
                                  std::string_view prefix) override {
        opened.push_back({std::string(target), std::string(workingFolder), std::string(prefix)});
        return answer;
    }
};

class FakeSound : public SoundPlayer {
public:
    std::vector<std::string> played;
    std::error_code Play(std::string_view file) override {
        played.emplace_back(file);
        return {};
    }
};

/// The titles of the boxes with their icons, one after the other: "? Install X mod?|X Error!".
QString Titles(const AnswerBoxes& boxes);

/// A game with one file and an empty program folder in a temporary folder, and the real main window on them.
class SelectorFixture : public testing::Test {
protected:
    SelectorFixture();
    ~SelectorFixture() override;

    /// Makes the window and starts it; what Start returned.
    bool Start() { return Start(files); }
    bool Start(FileSystem& withFiles);
    void End(); ///< and takes the window away

    QString Path(const QString& relative) const { return root_.filePath(relative); }
    /// Writes a file below the temporary folder, with its folders.
    void Write(const QString& relative, const QByteArray& bytes) const;
    /// Files that hold their own paths, and folders, whose paths end in `/`; all in a folder.
    void Make(std::initializer_list<const char*> paths, const QString& folder = {}) const;
    void MakeMods(std::initializer_list<const char*> paths) const { Make(paths, "program/mods/"); }
    void MakeFolder(const QString& relative) const { QDir().mkpath(Path(relative)); }
    /// Renames to a name that differs in letter case only.
    void Respell(const QString& from, const QString& to) const;
    QByteArray Read(const QString& relative) const;
    bool Exists(const QString& relative) const { return QFileInfo::exists(Path(relative)); }

    template <typename T>
    T& Control(const char* name) const {
        return Control<T>(*window, name);
    }
    /// A control of another window.
    template <typename T>
    static T& Control(const QWidget& window, const char* name) {
        T* control = window.findChild<T*>(QLatin1String(name));
        if (!control) throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }
    /// Chooses a menu item and returns the window of that name that it opened.
    QWidget& OpenWindow(const char* item, const char* name) const;
    /// The same, as the window of `In` and `Press`.
    void Open(const char* item, const char* name) { opened = &OpenWindow(item, name); }
    template <typename T>
    T& In(const char* name) const {
        return Control<T>(*opened, name);
    }
    QString Caption(const char* label) const { return In<QLabel>(label).text(); }
    void Press(const char* button) const { In<QAbstractButton>(button).click(); }
    bool WaitUntilClosed() const {
        return WaitFor([&] { return !opened->isVisible(); });
    }
    QAction& Item(const char* name) const { return Control<QAction>(name); }
    QListWidget& Mods() const { return Control<QListWidget>("lstMods"); }
    QStringList Rows() const;
    QString SelectedText() const;
    /// Drags files onto the window and drops them; false when it does not take them.
    bool Drop(const QList<QUrl>& files, Qt::DropActions offered = Qt::MoveAction | Qt::CopyAction) const;
    bool Drop(const char* file) const { return Drop({QUrl::fromLocalFile(Path(file))}); }
    /// Lets the automatic refresh run once.
    void Tick() const;

    std::unique_ptr<FileSystem> disk = MakeFileSystem();
    FaultyFileSystem files{*disk};
    std::function<void()> onChange = [] {}; ///< in the middle of file work
    int treeSizes = 0;                      ///< asked once for each time the details panel is filled
    FakeRegistry registry;
    FakeSettings settings;
    FakeShell shell;
    FakeSound sound;
    std::function<std::error_code()> startAsAdministrator;
    std::unique_ptr<QMainWindow> window;
    LibraryHost* main = nullptr; ///< the same, once it is started
    QWidget* opened = nullptr;

private:
    QTemporaryDir root_;
};

} // namespace quillbay::test
