#include "odf/ModTree.h"

#include "library/KnownFolders.h"
#include "platform/PathText.h"

#include <array>
#include <utility>

namespace quillbay {

namespace {

constexpr std::string_view kRootText = "Mods";

/// Known folders that the tree shows in a spelling of its own.
constexpr std::array<std::pair<std::string_view, std::string_view>, 2> kOwnTexts = {{
    {R"(bitmaps\AdmiralsLog\Buttons\)", "buttons"},
    {R"(Logs\)", "logs"},
}};

std::string_view TextOf(std::string_view knownFolder) {
    for (const auto& [folder, text] : kOwnTexts)
        if (folder == knownFolder) return text;
    return LastComponent(WithoutFinalSeparators(knownFolder));
}

/// The nodes of the folders found directly below the known folder at `parent`.
std::vector<TreeFolder> ChildrenOf(std::size_t parent, const KnownFolderPaths& found) {
    std::vector<TreeFolder> children;
    for (std::size_t position = 0; position < found.size(); ++position) {
        if (found[position].empty() || ParentOfKnownFolder(position) != parent) continue;
        children.push_back(
            {std::string(TextOf(GameFolders[position])), found[position], ChildrenOf(position, found)});
    }
    return children;
}

} // namespace

TreeFolder ReadModTree(const FileSystem& files, std::string_view programDirectory,
                       const std::vector<ModRow>& rows) {
    TreeFolder root{std::string(kRootText), {LibraryFolder(programDirectory)}, {}};
    for (const ModRow& row : rows) {
        if (row.IsAddon() || row.path.Empty()) continue;
        std::string folder = Join(root.folders.front(), row.path.text);
        auto children = ChildrenOf(kKnownFolderCount, FindKnownFolders(files, folder));
        root.children.push_back({row.text, {std::move(folder)}, std::move(children)});
    }
    return root;
}

} // namespace quillbay
