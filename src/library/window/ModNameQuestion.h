#pragma once

#include <optional>
#include <string>

class QWidget;

/// The boxes about the name of a mod's folder.
namespace quillbay {

class ModIntake;

/// None when the user gives up.
std::optional<std::string> AskModName(QWidget* window);
void TellInvalidName(QWidget* window);
void TellInvalidCharacters(QWidget* window);

/// A name for a mod, and whether it replaces the one that has it.
struct ChosenName {
    std::string name;
    bool replaces = false;
};

/// The mod's own name where it is good and free; else asks until the user has named a good one or gives up.
std::optional<ChosenName> ChooseModName(QWidget* window, const ModIntake& intake, std::string name);

} // namespace quillbay
