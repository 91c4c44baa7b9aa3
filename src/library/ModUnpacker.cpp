#include "library/ModUnpacker.h"

#include "library/EntryPlace.h"
#include "platform/PathText.h"

#include <algorithm>
#include <optional>
#include <span>
#include <unordered_set>
#include <utility>

namespace quillbay {

namespace {

/// Nearly every file system gives a file its room in multiples of this.
constexpr std::uint64_t kDiskBlock = 4096;

std::string JoinNames(std::span<const std::string_view> names) {
    std::string path;
    for (const auto name : names)
        path = Join(path, name);
    return path;
}

IntakeFailure WriteFailure(std::error_code error, std::string path) {
    const auto problem =
        error == std::errc::no_space_on_device ? IntakeProblem::NoRoom : IntakeProblem::Unwritable;
    return {problem, error, std::move(path)};
}

class Unpacker {
public:
    Unpacker(FileSystem& files, ArchiveReader& source, const std::string& folder, const IntakeLimits& limits,
             const IntakeProgress& progress)
        : files_(files), source_(source), folder_(folder), limits_(limits), progress_(progress) {}

    UnpackResult Run() {
        result_.failure = MeasureRoom();
        for (std::size_t count = 0; !result_.failure; ++count) {
            const auto entry = source_.Next();
            if (!entry) {
                result_.failure = {IntakeProblem::Unreadable, entry.Error(), {}};
            } else if (!*entry) {
                break;
            } else if (count == limits_.entries) {
                result_.failure = {IntakeProblem::TooLarge, {}, {}};
            } else if (!GoesOn()) {
                result_.failure = {IntakeProblem::Stopped, {}, {}};
            } else {
                result_.failure = TakeEntry(**entry);
            }
        }
        return std::move(result_);
    }

private:
    IntakeFailure MeasureRoom() {
        const auto space = files_.SpaceAt(folder_);
        if (!space) return WriteFailure(space.Error(), folder_);
        const auto kept = std::max(limits_.leastLeft, space->total / 100 * limits_.leastPercentLeft);
        room_ = space->free - std::min(space->free, kept);
        return {};
    }

    bool GoesOn() const { return progress_(source_.Done(), source_.Total()); }

    IntakeFailure TakeEntry(const ArchiveEntry& entry) {
        const EntryPlace place = FindPlace(entry);
        if (place.leadsOut) return {IntakeProblem::LeadsOut, {}, entry.name};
        const std::span names(place.names);
        if (place.leftOut) {
            LeaveOut(JoinNames(names.first(std::min(place.leftOutAt + 1, names.size()))), *place.leftOut);
            return TakeBytes(entry, nullptr);
        }
        const bool isFolder = entry.kind == EntryKind::Folder;
        const auto folder = isFolder || names.empty() ? names : names.first(names.size() - 1);
        std::size_t depth = 0;
        const auto parent = TakeFolder(folder, depth);
        if (!parent) return std::move(failure_);
        if (depth < folder.size()) {
            LeaveOut(JoinNames(folder.first(depth + 1)), LeftOutReason::FileAndFolder);
            return TakeBytes(entry, nullptr);
        }
        return isFolder || names.empty() ? IntakeFailure{} : TakeFile(entry, *parent, names.back());
    }

    /// Makes what is missing. `depth` is how many of the folders are there afterwards: all, unless a file is
    /// in the way.
    std::optional<StagedTree::Index> TakeFolder(std::span<const std::string_view> names, std::size_t& depth) {
        auto folder = StagedTree::kTop;
        for (depth = 0; depth < names.size(); ++depth) {
            auto child = result_.tree.Find(folder, names[depth]);
            if (!child) {
                child = result_.tree.Add(folder, names[depth], true);
                const std::string path = Join(folder_, result_.tree.PathOf(*child));
                if (const auto error = files_.MakeFolder(path)) {
                    failure_ = WriteFailure(error, path);
                    return std::nullopt;
                }
                if (!UseRoom(kDiskBlock)) {
                    failure_ = {IntakeProblem::NoRoom, {}, {}};
                    return std::nullopt;
                }
            }
            if (!result_.tree[*child].isFolder) break;
            folder = *child;
        }
        return folder;
    }

    IntakeFailure TakeFile(const ArchiveEntry& entry, StagedTree::Index folder, std::string_view name) {
        auto node = result_.tree.Find(folder, name);
        if (node && result_.tree[*node].isFolder) {
            LeaveOut(result_.tree.PathOf(*node), LeftOutReason::FileAndFolder);
            return TakeBytes(entry, nullptr);
        }
        if (node) {
            const std::string old = result_.tree.PathOf(*node);
            if (const auto error = files_.RemoveFile(Join(folder_, old))) return WriteFailure(error, old);
            LeaveOut(old, LeftOutReason::Superseded);
            result_.tree.Respell(*node, name);
        } else {
            node = result_.tree.Add(folder, name, false);
        }
        const std::string path = Join(folder_, result_.tree.PathOf(*node));
        auto writer = files_.MakeFile(path, {entry.modified, entry.executable});
        if (!writer) return WriteFailure(writer.Error(), path);
        if (auto failure = TakeBytes(entry, writer->get())) {
            if (failure.path.empty()) failure.path = entry.name;
            return failure;
        }
        const auto error = (*writer)->Commit();
        return error ? WriteFailure(error, path) : IntakeFailure{};
    }

    /// Reads the entries that are left out as well: the reader has to pass over their bytes, which must
    /// neither take for ever nor hide a damage.
    IntakeFailure TakeBytes(const ArchiveEntry& entry, FileWriter* writer) {
        if (entry.kind != EntryKind::File) return {};
        std::uint64_t size = 0;
        while (true) {
            const auto bytes = source_.Read();
            if (!bytes) return {IntakeProblem::Unreadable, bytes.Error(), {}};
            if (bytes->empty()) break;
            size += bytes->size();
            total_ += bytes->size();
            if (total_ > limits_.bytes) return {IntakeProblem::TooLarge, {}, {}};
            if (writer) {
                if (!UseRoom(bytes->size())) return {IntakeProblem::NoRoom, {}, {}};
                if (const auto error = writer->Write(*bytes)) return WriteFailure(error, {});
            }
            if (!GoesOn()) return {IntakeProblem::Stopped, {}, {}};
        }
        // Some readers take an early end of the data for the end of the entry.
        if (entry.size && *entry.size != size) return {IntakeProblem::Unreadable, ArchiveError::Broken, {}};
        if (writer && !UseRoom(kDiskBlock)) return {IntakeProblem::NoRoom, {}, {}};
        return {};
    }

    bool UseRoom(std::uint64_t bytes) {
        if (bytes > room_) return false;
        room_ -= bytes;
        return true;
    }

    void LeaveOut(std::string path, LeftOutReason reason) {
        if (told_.insert(path).second) result_.leftOut.push_back({std::move(path), reason});
    }

    FileSystem& files_;
    ArchiveReader& source_;
    const std::string& folder_;
    const IntakeLimits& limits_;
    const IntakeProgress& progress_;
    UnpackResult result_;
    IntakeFailure failure_;
    std::unordered_set<std::string> told_;
    std::uint64_t room_ = 0;  ///< bytes that may still be written
    std::uint64_t total_ = 0; ///< bytes that came
};

} // namespace

UnpackResult Unpack(FileSystem& files, ArchiveReader& source, const std::string& folder,
                    const IntakeLimits& limits, const IntakeProgress& progress) {
    return Unpacker(files, source, folder, limits, progress).Run();
}

} // namespace quillbay
