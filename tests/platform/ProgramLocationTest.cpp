#include "platform/ProgramLocation.h"

#include <gtest/gtest.h>
#include <set>

namespace quillbay {
namespace {

TEST(ProgramLocationTest, ModsLieBesideAPortableProgramAndElseInTheUsersOwnPlace) {
    const struct {
        const char* executable;
        bool isForPrograms;
        std::set<std::string> writable;
        const char* expected;
    } rows[] = {
        {"/p", false, {"/p"}, "/p"},
        {"/p", false, {}, "/user"},
        {"/p", false, {"/p/mods"}, "/p"},
        {"/p", true, {"/p"}, "/user"}, // an administrator sees the mods that he has without the rights
        {"/p", true, {"/p", "/p/mods"}, "/p"},
        {"", false, {"", "/mods"}, "/user"},
    };
    for (const auto& row : rows) {
        const ProgramPlaces places{row.executable, "/user", row.isForPrograms};
        const auto isWritable = [&](const std::string& folder) { return row.writable.contains(folder); };
        EXPECT_EQ(ChooseProgramFolder(places, isWritable), row.expected) << row.executable << &row - rows;
    }
}

} // namespace
} // namespace quillbay
