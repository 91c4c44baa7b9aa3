#include "support/TempFolder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace quillbay::test {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    std::random_device random;
    fs::path folder;
    do {
        folder = fs::temp_directory_path() / ("quillbay-test-" + std::to_string(random()));
    } while (!fs::create_directory(folder));
    const auto text = fs::canonical(folder).u8string();
    path_.assign(text.begin(), text.end());
}

TempFolder::~TempFolder() {
    const fs::path root = DiskPath(path_);
    std::error_code ignored;
    // Read-only files cannot be removed on Windows.
    for (auto at = fs::recursive_directory_iterator(root, ignored); at != end(at); at.increment(ignored))
        if (!at->is_symlink(ignored))
            fs::permissions(at->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(root, ignored);
}

std::string TempFolder::operator/(std::string_view relative) const {
    return path_ + "\\" + std::string(relative);
}

fs::path DiskPath(std::string_view path) {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return fs::path(std::u8string(native.begin(), native.end())).make_preferred();
}

void PutFolder(std::string_view path) { fs::create_directories(DiskPath(path)); }

void PutFile(std::string_view path, std::string_view bytes) {
    const fs::path file = DiskPath(path);
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) throw std::runtime_error("cannot write " + std::string(path));
}

std::string FileBytes(std::string_view path) {
    std::ifstream stream(DiskPath(path), std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + std::string(path));
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace quillbay::test
