#include "library/window/RightsBox.h"

#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "library/window/LibraryHost.h"
#include "platform/WriteRights.h"
#include "platform/window/ShieldIcon.h"

namespace quillbay {

void TellNoRights(LibraryHost& main, const WriteRefusal& refusal, const QString& sentence) {
    QWidget* window = &main.MainWindow();
    QString text = WithPath(ToQString(HowToGetRights(refusal.folder)), refusal.folder, refusal.error);
    if (!sentence.isEmpty()) text.prepend(sentence + QStringLiteral("\n\n"));
    const auto& startAsAdministrator = main.GetServices().startAsAdministrator;
    if (!startAsAdministrator) {
        ShowError(window, text);
        return;
    }
    if (!ShowErrorWithWayOut(window, text, QStringLiteral("Start as administrator"), ShieldIcon()) ||
        main.Phase != ProgramPhase::Running || !main.MayEnd())
        return;
    const auto error = startAsAdministrator();
    if (!error)
        main.EndProgram();
    else if (error != std::errc::operation_canceled)
        ShowError(window,
                  QStringLiteral("Quillbay could not be started as administrator.\n\n") + Reason(error));
}

} // namespace quillbay
