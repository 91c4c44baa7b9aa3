#include "help/ReadmeTopics.h"

#include <algorithm>
#include <cstddef>

namespace quillbay {

namespace {

constexpr std::size_t kIndent = 4;

bool StaysALine(std::string_view line, std::string_view lineAbove) {
    const auto begins = [](std::string_view text, std::string_view with) {
        return !text.empty() && with.find(text.front()) != std::string_view::npos;
    };
    return line.empty() || lineAbove.empty() || begins(line, " -0123456789") || begins(lineAbove, " ");
}

std::string JoinParagraphs(std::string_view source) {
    std::string text;
    std::string_view above;
    while (!source.empty()) {
        const auto line = source.substr(0, source.find('\n'));
        if (!text.empty()) text += StaysALine(line, above) ? '\n' : ' ';
        text += line;
        above = line;
        source.remove_prefix(std::min(source.size(), line.size() + 1));
    }
    return text;
}

void Replace(std::string& text, std::string_view name, std::string_view value) {
    if (const auto at = text.find(name); at != std::string::npos) text.replace(at, name.size(), value);
}

} // namespace

std::vector<ReadmeTopic> ReadmeTopics() {
    std::vector<ReadmeTopic> topics;
    for (auto at = kReadmeSource.find("\n#"); at != std::string_view::npos;) {
        const auto next = kReadmeSource.find("\n#", at + 1);
        const auto topic = kReadmeSource.substr(at + 1, next - at - 1);
        const auto signs = topic.find(' ');
        const auto end = topic.find('\n');
        const auto first = topic.find_first_not_of('\n', end);
        topics.push_back({topic.substr(signs + 1, end - signs - 1), static_cast<int>(signs) - 1,
                          topic.substr(first, topic.find_last_not_of('\n') + 1 - first)});
        at = next;
    }
    return topics;
}

std::string ReadmeRow(const ReadmeTopic& topic) {
    return std::string(kIndent * static_cast<std::size_t>(topic.level), ' ').append(topic.name);
}

std::string ReadmeText(const ReadmeTopic& topic, std::string_view programDirectory) {
    std::string text = JoinParagraphs(topic.source);
    Replace(text, "{address}", kContactAddress);
    Replace(text, "{program}", programDirectory);
    return text;
}

} // namespace quillbay
