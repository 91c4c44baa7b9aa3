#include "library/window/ModNameQuestion.h"

#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "library/ModIntake.h"

#include <QString>
#include <QStringList>

#include <utility>

namespace quillbay {

namespace {

enum class TakenAnswer { Replace, AnotherName, Cancel };

TakenAnswer AskAboutTaken(QWidget* window, const std::string& name, bool mayReplace) {
    const QString text = QStringLiteral("mods\\") + ToQString(name) + QStringLiteral(" exists already.");
    QStringList captions{QStringLiteral("Another name"), QStringLiteral("Cancel")};
    if (mayReplace) captions.prepend(QStringLiteral("Replace it"));
    const int pressed = AskChoice(window, text, captions) + (mayReplace ? 0 : 1);
    return static_cast<TakenAnswer>(pressed);
}

} // namespace

std::optional<std::string> AskModName(QWidget* window) {
    const auto typed = AskText(window, QStringLiteral("Please enter the name of the folder."),
                               QStringLiteral("Make new folder"));
    if (!typed || typed->isEmpty()) return std::nullopt;
    return FromQString(*typed);
}

void TellInvalidName(QWidget* window) { ShowMessage(window, QStringLiteral("Invalid name.")); }

void TellInvalidCharacters(QWidget* window) {
    ShowError(window, QStringLiteral("An error has occurred. It is possible that you have entered invalid "
                                     "characters. Please enter a different name."));
}

std::optional<ChosenName> ChooseModName(QWidget* window, const ModIntake& intake, std::string name) {
    for (bool isTyped = false;; isTyped = true) {
        const ModPlace place = intake.FindPlace(name);
        switch (place) {
        case ModPlace::Free:
            return ChosenName{std::move(name), false};
        case ModPlace::Replaceable:
        case ModPlace::Taken:
            switch (AskAboutTaken(window, name, place == ModPlace::Replaceable)) {
            case TakenAnswer::Replace:
                return ChosenName{std::move(name), true};
            case TakenAnswer::Cancel:
                return std::nullopt;
            case TakenAnswer::AnotherName:
                break;
            }
            break;
        case ModPlace::InvalidName:
            if (isTyped) TellInvalidName(window);
            break;
        case ModPlace::InvalidCharacter:
            if (isTyped) TellInvalidCharacters(window);
            break;
        }
        auto typed = AskModName(window);
        if (!typed) return std::nullopt;
        name = std::move(*typed);
    }
}

} // namespace quillbay
