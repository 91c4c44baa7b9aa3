#include "common/window/AppSettings.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "library/window/Services.h"
#include "platform/Archive.h"
#include "platform/FileSystem.h"
#include "platform/ProgramLocation.h"
#include "platform/Registry.h"
#include "platform/ShellOpener.h"
#include "platform/SingleInstance.h"
#include "platform/SoundPlayer.h"
#include "platform/WriteRights.h"
#include "platform/window/ProgramWindow.h"
#include "shell/window/frmSelector.h"

#include <QApplication>
#include <QDir>
#include <QIcon>

namespace quillbay {

namespace {

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128})
        icon.addFile(QStringLiteral(":/icons/quillbay-%1.png").arg(size));
    return icon;
}

/// Where the system may throw everything away, no mod and no saved file of the game must come to lie. One who
/// has mods there already has to get at them.
bool MayStayThere(const ProgramPlaces& places) {
    const QString folder = ShownPath(places.executable);
    if (!places.isEmptiedBySystem || QDir(folder + QStringLiteral("/mods")).exists()) return true;
    ShowMessage(
        nullptr,
        QStringLiteral("Quillbay was started from inside an archive, or from a folder that the system "
                       "empties:\n\n%1\n\nMods and saved files of the game would be lost there. Unpack "
                       "it into a folder of its own first, and start it there.")
            .arg(folder),
        QStringLiteral("Unpack it first"), QMessageBox::Warning);
    return false;
}

int Run() {
    auto instance = SingleInstance::Acquire();
    if (!instance) {
        ShowMessage(nullptr,
                    QStringLiteral("Warning: Previous instance of application detected. Aborting load."),
                    QStringLiteral("Warning!"), QMessageBox::Critical);
        RaiseMainWindow();
        return 0;
    }
    const ProgramPlaces places = FindProgramPlaces();
    if (!MayStayThere(places)) return 0;
    const auto files = MakeFileSystem();
    const auto registry = MakeRegistry();
    const auto shell = MakeShellOpener();
    const auto sound = MakeSoundPlayer();
    UserSettings settings;
    std::function<std::error_code()> startAsAdministrator;
    if (CanStartAsAdministrator()) {
        startAsAdministrator = [&instance] {
            instance.reset(); // the new instance would find this one
            const auto error = StartAsAdministrator();
            if (error) instance = SingleInstance::Acquire();
            return error;
        };
    }
    frmSelector selector({*files, *registry, settings, *shell, *sound, OpenArchive,
                          MakeProgramDirectory(places), startAsAdministrator});
    MarkMainWindow(selector);
    return selector.Start() ? QApplication::exec() : 0;
}

} // namespace

} // namespace quillbay

int main(int argc, char** argv) {
    quillbay::PrepareProgram();
    const QApplication application(argc, argv);
    QApplication::setWindowIcon(quillbay::ProgramIcon());
    quillbay::LetTitleBarsFollowPalette();
    return quillbay::Run();
}
