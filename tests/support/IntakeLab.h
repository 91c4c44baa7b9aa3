#pragma once

#include "library/ModIntake.h"
#include "support/DiskTest.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillbay::test {

/// A library, and beside it a place for archives and folders that shall get into it.
class IntakeLab : public DiskTest {
protected:
    struct Taken {
        IntakeFailure failure;
        std::vector<LeftOut> leftOut;
        std::vector<PlacedMod> placed;
        bool isSorted = true;
    };

    IntakeLab() { PutFolder(temp_ / "mods"); }

    /// Takes in a path below the place for them; a mod that is there already is replaced where it may be.
    Taken Take(
        FileSystem& files, const std::string& name, const IntakeLimits& limits = {},
        const IntakeProgress& progress = [](auto, auto) { return true; });
    Taken Take(const std::string& name) { return Take(*disk_, name); }
    /// The same of an archive of these bytes.
    Taken TakeBytes(const std::string& name, std::string_view bytes) {
        PutFile(outside_ / name, bytes);
        return Take(name);
    }
    std::string Mods() const { return temp_ / "mods"; }
    /// The files of the library, sorted: "X/odf/a=bytes Y/b=bytes". Behind a "!" stands what should not be:
    /// what lies beside the library, and what the program works on.
    std::string Files() const;

    const TempFolder outside_;
};

} // namespace quillbay::test
