#include "common/window/AppSettings.h"
#include "common/window/ShowMessage.h"
#include "library/window/Services.h"
#include "platform/Archive.h"
#include "platform/FileSystem.h"
#include "platform/ProgramLocation.h"
#include "platform/Registry.h"
#include "platform/ShellOpener.h"
#include "platform/SingleInstance.h"
#include "platform/SoundPlayer.h"
#include "shell/window/frmSelector.h"

#include <QApplication>
#include <QIcon>

namespace {

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/quillbay-%1.png").arg(size));
    return icon;
}

} // namespace

int main(int argc, char** argv) {
    using namespace quillbay;
    const QApplication application(argc, argv);
    QApplication::setWindowIcon(ProgramIcon());
    const auto instance = SingleInstance::Acquire();
    if (!instance) {
        ShowMessage(nullptr,
                    QStringLiteral("Warning: Previous instance of application detected. Aborting load."),
                    QStringLiteral("Warning!"), QMessageBox::Critical);
        return 0;
    }
    const auto files = MakeFileSystem();
    const auto registry = MakeRegistry();
    const auto shell = MakeShellOpener();
    const auto sound = MakeSoundPlayer();
    UserSettings settings;
    frmSelector selector({*files, *registry, settings, *shell, *sound, OpenArchive, FindProgramDirectory()});
    return selector.Start() ? QApplication::exec() : 0;
}
