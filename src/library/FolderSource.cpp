#include "library/FolderSource.h"

#include "library/EntryPlace.h"
#include "platform/PathText.h"

#include <utility>
#include <vector>

namespace quillbay {

namespace {

constexpr std::size_t kBlock = 256 * 1024;

class FolderSource : public ArchiveReader {
public:
    FolderSource(const FileSystem& files, std::string folder, std::string name, std::uint64_t total)
        : files_(files), folder_(std::move(folder)), name_(std::move(name)), total_(total) {
        DirEntry top;
        top.kind = EntryKind::Folder;
        pending_.push_back(std::move(top));
    }

    Result<std::optional<ArchiveEntry>> Next() override {
        while (!pending_.empty()) {
            const DirEntry found = std::move(pending_.back());
            pending_.pop_back();
            path_ = Join(folder_, found.name);
            offset_ = 0;
            const EntryKind kind = found.isLink ? EntryKind::Other : found.kind;
            if (kind == EntryKind::Folder) {
                auto entries = files_.List(path_, Detail::Full);
                if (!entries) return entries.Error();
                for (DirEntry& entry : *entries) {
                    entry.name = Join(found.name, entry.name);
                    pending_.push_back(std::move(entry));
                }
            }
            std::string name = Join(name_, found.name);
            // The size is not declared: a file may grow while it is read.
            if (!name.empty())
                return std::optional(
                    ArchiveEntry{std::move(name), kind, {}, found.modified, found.executable});
        }
        return std::optional<ArchiveEntry>();
    }

    Result<std::string_view> Read() override {
        if (offset_ > 0 && block_.size() < kBlock) return std::string_view();
        auto block = files_.Read(path_, offset_, kBlock);
        if (!block) return block.Error();
        block_ = std::move(*block);
        offset_ += block_.size();
        done_ += block_.size();
        return std::string_view(block_);
    }

    std::uint64_t Done() const override { return done_; }
    std::uint64_t Total() const override { return total_; }

private:
    const FileSystem& files_;
    std::string folder_;
    std::string name_;              ///< in front of every entry's; may be empty
    std::vector<DirEntry> pending_; ///< names are paths below the folder
    std::string path_;              ///< of the entry
    std::uint64_t offset_ = 0;      ///< in the entry
    std::string block_;
    std::uint64_t done_ = 0;
    std::uint64_t total_;
};

} // namespace

Result<std::unique_ptr<ArchiveReader>> OpenFolder(const FileSystem& files, std::string_view folder) {
    const auto total = files.TreeSize(folder);
    if (!total) return total.Error();
    std::string name(LastComponent(WithoutFinalSeparators(folder)));
    const EntryPlace place = FindPlace({name, EntryKind::Folder, {}, {}, false});
    if (place.leadsOut || place.leftOut) name.clear(); // a drive, or what only this system allows
    return std::unique_ptr<ArchiveReader>(
        std::make_unique<FolderSource>(files, std::string(folder), std::move(name), *total));
}

} // namespace quillbay
