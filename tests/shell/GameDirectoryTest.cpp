#include "shell/GameDirectory.h"

#include "platform/DosPath.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

class OneValueRegistry : public Registry {
public:
    explicit OneValueRegistry(std::string value) : value_(std::move(value)) {}

    std::string ReadRegistryString(std::string_view key, std::string_view valueName,
                                   std::string_view fallback) const override {
        const bool known = key == R"(Software\Brightgate\Tempest II\v1.0)" && valueName == "INSTALLPATH";
        return known ? value_ : std::string(fallback);
    }

private:
    std::string value_;
};

TEST(GameDirectory, ComesFromTheGamesOwnRegistryEntry) {
    EXPECT_EQ(ReadGameDirectory(OneValueRegistry("C:\\T2\\")), NativePath("C:\\T2\\"));
    EXPECT_EQ(ReadGameDirectory(OneValueRegistry("")), "");
}

TEST(CheckCandidate, TakesFoldersInExactLetterCaseOnly) {
    TempFolder temp;
    temp.MakeFolders("Tempest II\\odf");
    temp.WriteFile("File", "x");
    const std::string game = temp.Path("Tempest II");
    const auto state = [&](const std::string& typed, const std::string& current = "") {
        return CheckCandidate(temp.Files(), typed, current).state;
    };

    const Candidate accepted = CheckCandidate(temp.Files(), game + "\\", kGameNotFound);
    EXPECT_EQ(accepted.state, CandidateState::Accepted);
    EXPECT_EQ(accepted.path, game);
    EXPECT_EQ(state(game), CandidateState::Accepted);
    EXPECT_EQ(state(game, game), CandidateState::Rejected);
    EXPECT_EQ(state(game + "\\", game), CandidateState::Rejected);
    EXPECT_EQ(state(temp.Path("tempest ii")), CandidateState::Rejected);
    EXPECT_EQ(state(temp.Path("File")), CandidateState::Rejected);
    EXPECT_EQ(state(temp.Path("gone")), CandidateState::Rejected);
    EXPECT_EQ(state(game + "\\odf\\.."), CandidateState::Rejected);
    EXPECT_EQ(state(game + "\\."), CandidateState::Rejected);
    for (const char* nameless : {"", "Tempest II", "C:\\", "/", "\\\\"}) {
        EXPECT_EQ(state(nameless), CandidateState::NoName) << nameless;
    }
    EXPECT_EQ(state(game + "\\\\"), CandidateState::NoName) << "only one separator is taken off";
}

TEST(IsExistingFolder, KnowsTheMarkerAndFiles) {
    TempFolder temp;
    temp.WriteFile("file", "x");
    EXPECT_TRUE(IsExistingFolder(temp.Files(), temp.Path() + "\\"));
    for (const std::string& path : {std::string(), std::string(kGameNotFound), temp.Path("file")}) {
        EXPECT_FALSE(IsExistingFolder(temp.Files(), path)) << path;
    }
}

} // namespace
} // namespace quillbay
