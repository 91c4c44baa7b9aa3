#include "support/TempFolder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>

namespace quillbay::test {

namespace fs = std::filesystem;

namespace {

std::string ToText(const std::u8string& text) { return {text.begin(), text.end()}; }

} // namespace

TempFolder::TempFolder() {
    std::random_device random;
    fs::path folder;
    do {
        folder = fs::temp_directory_path() / ("quillbay-test-" + std::to_string(random()));
    } while (!fs::create_directory(folder));
    path_ = ToText(fs::canonical(folder).u8string());
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

std::set<std::string> TempFolder::Entries() const {
    const fs::path root = DiskPath(path_);
    std::set<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const auto name = ToText(entry.path().lexically_relative(root).generic_u8string());
        if (entry.is_symlink())
            found.insert(name + "->" + ToText(fs::read_symlink(entry.path()).u8string()));
        else
            found.insert(entry.is_directory() ? name + '/' : name + '=' + FileBytes(*this / name));
    }
    return found;
}

std::string TempFolder::Contents() const {
    std::string contents;
    for (const auto& text : Entries())
        contents += (contents.empty() ? "" : " ") + text;
    return contents;
}

void TempFolder::Put(const std::string& contents) const {
    std::istringstream stream(contents);
    for (std::string text; stream >> text;) {
        const auto at = text.find('=');
        if (text.ends_with('/'))
            PutFolder(*this / text);
        else
            PutFile(*this / text.substr(0, at), text.substr(at + 1));
    }
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
