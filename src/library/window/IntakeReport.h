#pragma once

#include "common/window/OutcomeText.h"
#include "library/ModIntake.h"

#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace quillbay {

/// What has come into the library by one command.
struct IntakeSummary {
    struct Mod {
        std::string name;
        std::size_t files = 0;
        bool wasInstalled = false; ///< its former version is in the game
        bool isSorted = true;      ///< its files lie in folders of the game
    };

    std::vector<Mod> mods;
    std::vector<LeftOut> leftOut;
};

/// Why nothing was taken of the archive or folder; empty when the user stopped it.
QString WhyNotTaken(const IntakeFailure& failure, const QString& path);

/// For the foot of the main window; at least one mod.
OutcomeText Describe(const IntakeSummary& summary);

} // namespace quillbay
