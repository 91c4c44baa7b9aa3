#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The help that the readme window shows.
namespace quillbay {

inline constexpr std::string_view kContactAddress = "author@quillbay.example";

struct ReadmeTopic {
    std::string_view name;
    int level; ///< 0 to 3
    /// As it is written in readme.txt: ReadmeText makes it what the user reads.
    std::string_view source;
};

/// The file readme.txt: the topics in the order of the list. Each begins with a line of a number sign for
/// each level and one more, a blank and the topic's name; no other line begins with a number sign.
extern const std::string_view kReadmeSource;

std::vector<ReadmeTopic> ReadmeTopics();

/// The topic's row in the list: four blanks a level, then its name.
std::string ReadmeRow(const ReadmeTopic& topic);

/// What the user reads, with LF line ends. Lines of a paragraph are joined; a line that begins with a blank,
/// a hyphen or a digit, and the one after a line that begins with a blank, stay lines. "{program}" and
/// "{address}" become the program directory and the author's address.
std::string ReadmeText(const ReadmeTopic& topic, std::string_view programDirectory);

} // namespace quillbay
