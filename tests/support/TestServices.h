#pragma once

#include "platform/FileSystem.h"
#include "platform/Registry.h"
#include "platform/ShellOpener.h"
#include "platform/SoundPlayer.h"
#include "shell/AppSettings.h"
#include "shell/Services.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>
#include <string>
#include <vector>

namespace quillbay::test {

/// The services of a window test: a program directory in a temporary folder on the real file system, and
/// nothing else of this computer.
class TestServices {
public:
    std::string ProgramDirectory() const { return services.programDirectory; }
    /// A path below the temporary folder, made as a folder (`/` between components).
    std::string MakeFolder(const QString& relative) {
        QDir(folder_.path()).mkpath(relative);
        return folder_.filePath(relative).toStdString();
    }

private:
    class NoRegistry : public Registry {
        std::string ReadRegistryString(std::string_view, std::string_view,
                                       std::string_view fallback) const override {
            return std::string(fallback);
        }
    };
    class NoSettings : public AppSettings {
        QString GetAppSetting(const QString&, const QString&, const QString& fallback) const override {
            return fallback;
        }
        void SaveAppSetting(const QString&, const QString&, const QString&) override {}
    };
    class NoShell : public ShellOpener {
        std::error_code OpenWithShell(std::string_view, std::string_view) override { return {}; }
    };
    class NoSound : public SoundPlayer {
        std::error_code Play(std::string_view) override { return {}; }
    };

    QTemporaryDir folder_;
    std::unique_ptr<FileSystem> files_ = MakeFileSystem();
    NoRegistry registry_;
    NoSettings settings_;
    NoShell shell_;
    NoSound sound_;

public:
    Services services{*files_, registry_, settings_, shell_, sound_, MakeFolder("program")};
};

} // namespace quillbay::test
