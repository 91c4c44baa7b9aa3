#include "library/ModUnpacker.h"
#include "platform/Archive.h"
#include "platform/FileSystemWrapper.h"
#include "platform/PathText.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <set>

namespace {

using namespace quillbay;

constexpr std::uint64_t kMostBytes = 1 << 24;

/// Holds the archive, and only notes the names of what is made.
class NamesOnly : public FileSystemWrapper {
public:
    NamesOnly(FileSystem& base, std::string_view archive) : FileSystemWrapper(base), archive_(archive) {}

    Result<FileInfo> Stat(std::string_view) const override {
        FileInfo info;
        info.size = archive_.size();
        return info;
    }
    Result<std::string> Read(std::string_view, std::uint64_t offset, std::size_t maxBytes) const override {
        return std::string(archive_.substr(std::min<std::size_t>(offset, archive_.size()), maxBytes));
    }
    Result<DiskSpace> SpaceAt(std::string_view) const override { return DiskSpace{kMostBytes, kMostBytes}; }
    std::error_code MakeFolder(std::string_view folder) override { return Note(folder); }
    std::error_code RemoveFile(std::string_view file) override {
        return made_.erase(std::string(file)) == 1 ? std::error_code()
                                                   : std::make_error_code(std::errc::io_error);
    }
    Result<std::unique_ptr<FileWriter>> MakeFile(std::string_view file, NewFile) override {
        if (const auto error = Note(file)) return error;
        return std::unique_ptr<FileWriter>(std::make_unique<Nothing>());
    }

    bool Has(const std::string& path) const { return made_.contains(path); }

private:
    struct Nothing : FileWriter {
        std::error_code Write(std::string_view) override { return {}; }
        std::error_code Commit() override { return {}; }
    };

    /// Every name lies in the folder, in a folder that was made before, and is made once.
    std::error_code Note(std::string_view path) {
        const std::string parent(Parent(path));
        const auto name = LastComponent(path);
        const bool isGood =
            !name.empty() && name != ".." && name != "." && name.find(':') == std::string_view::npos;
        if (!isGood || (parent != "in" && !made_.contains(parent)) || !made_.insert(std::string(path)).second)
            std::abort();
        return {};
    }

    std::string_view archive_;
    std::set<std::string> made_;
};

} // namespace

/// An archive may ask for any amount of memory. What it does not get is one more way to fail.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=256";
}

/// Unpacks any bytes: nothing leads out of the folder, no more comes than is allowed, and every mod and paper
/// of the plan is among what was made.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto real = MakeFileSystem();
    NamesOnly files(*real, {reinterpret_cast<const char*>(data), size});
    const auto source = OpenArchive(files, "a");
    if (!source) return 0;
    const IntakeLimits limits{.bytes = kMostBytes, .entries = 2000, .leastLeft = 0, .leastPercentLeft = 0};
    const UnpackResult unpacked = Unpack(files, **source, "in", limits, [](auto, auto) { return true; });
    if (unpacked.failure) return 0;
    const ModLayout layout = PlanMods(unpacked.tree, "name");
    for (const NewMod& mod : layout.mods) {
        if (!mod.root.empty() && !files.Has(Join("in", mod.root))) std::abort();
        if (mod.name.empty() || mod.files == 0) std::abort();
        for (const LayoutMove& move : mod.moves)
            if (!files.Has(Join("in", move.from))) std::abort();
    }
    return 0;
}
