#include "shell/GameDirectory.h"

#include "platform/DosPath.h"
#include "support/DiskTest.h"

#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

class GameDirectoryTest : public DiskTest {};

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

TEST_F(GameDirectoryTest, CandidateTakesFoldersInExactLetterCaseOnly) {
    PutFolder(temp_ / "Tempest II\\odf");
    PutFile(temp_ / "File", "x");
    const std::string game = temp_ / "Tempest II";
    const auto state = [&](const std::string& typed, const std::string& current = "") {
        return CheckCandidate(*disk_, typed, current).state;
    };

    const Candidate accepted = CheckCandidate(*disk_, game + "\\", kGameNotFound);
    EXPECT_EQ(accepted.state, CandidateState::Accepted);
    EXPECT_EQ(accepted.path, game);
    EXPECT_EQ(state(game), CandidateState::Accepted);
    EXPECT_EQ(state(game, game), CandidateState::Rejected);
    EXPECT_EQ(state(game + "\\", game), CandidateState::Rejected);
    EXPECT_EQ(state(temp_ / "tempest ii"), CandidateState::Rejected);
    EXPECT_EQ(state(temp_ / "File"), CandidateState::Rejected);
    EXPECT_EQ(state(temp_ / "gone"), CandidateState::Rejected);
    EXPECT_EQ(state(game + "\\odf\\.."), CandidateState::Rejected);
    EXPECT_EQ(state(game + "\\."), CandidateState::Rejected);
    for (const char* nameless : {"", "Tempest II", "C:\\", "/", "\\\\"}) {
        EXPECT_EQ(state(nameless), CandidateState::NoName) << nameless;
    }
    EXPECT_EQ(state(game + "\\\\"), CandidateState::NoName) << "only one separator is taken off";
}

} // namespace
} // namespace quillbay::test
