#include "catalogue/LooseFileSorter.h"

#include "library/FolderMaker.h"
#include "library/InstalledMods.h"
#include "library/ModFiles.h"
#include "library/ModJob.h"
#include "odf/OdfLines.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace quillbay {

namespace {

/// The base names of the ODF files among the entries of one folder, and the question whether a file lies
/// beside the one of its name.
class OdfNames {
public:
    explicit OdfNames(const std::vector<DirEntry>& entries) {
        for (const auto& entry : entries)
            if (entry.IsPlainFile() && EndsFolded(entry.name, kOdfEnding))
                names_.insert(BaseName(entry.name));
    }
    bool HasOdf(std::string_view name) const { return names_.contains(BaseName(name)); }

private:
    static std::string BaseName(std::string_view name) { return FoldCase(name.substr(0, name.rfind('.'))); }

    std::unordered_set<std::string> names_;
};

/// By name: the position in LooseFileTypes of the first checked type in which the file is flagged.
std::unordered_map<std::string_view, std::size_t> ChooseTypes(const LooseFiles& loose,
                                                              const TypeChecks& checks) {
    std::unordered_map<std::string_view, std::size_t> chosen;
    for (std::size_t type = 0; type < kLooseFileTypeCount; ++type) {
        if (!checks[type]) continue;
        for (const auto& file : loose.byType[type])
            if (file.flagged) chosen.try_emplace(loose.names[file.number], type);
    }
    return chosen;
}

/// The names of the files without a type.
std::unordered_set<std::string_view> FindUntyped(const LooseFiles& loose) {
    std::unordered_set<std::string_view> untyped(loose.names.begin(), loose.names.end());
    for (const auto& files : loose.byType)
        for (const auto& file : files)
            untyped.erase(loose.names[file.number]);
    untyped.erase(kModInfoName);
    return untyped;
}

/// A second name, which copies no data and cannot run out of space; otherwise a copy that is on the disk.
std::error_code Duplicate(FileSystem& files, const std::string& from, const std::string& to) {
    if (!files.HardLink(from, to, true)) return {};
    return files.Copy(from, to, {.replace = true, .keepLink = true, .flush = true});
}

/// Whether removing `source` would take away what `target` holds: it is a link to it, or both are the one
/// name of a file by different ways.
Result<bool> IsOnlyAnotherWay(const FileSystem& files, const std::string& source, const std::string& target) {
    const auto from = files.Stat(source);
    if (!from) return from.Error();
    const auto to = files.Stat(target);
    if (!to) return to.Error();
    return from->id && from->id == to->id && (from->isLink || (from->links == 1 && !to->isLink));
}

/// The old file keeps a second name until the loose one has left the base folder, so that it can come back.
/// Under that name the next operation sweeps it, should this one be interrupted.
std::error_code MoveOver(FileSystem& files, const std::string& source, const std::string& target) {
    const auto isSame = IsOnlyAnotherWay(files, source, target);
    if (!isSame) return isSame.Error();
    if (*isSame) return std::make_error_code(std::errc::file_exists);
    const auto old = Join(Parent(target), kTempBackup);
    if (const auto error = Duplicate(files, target, old)) return error;
    auto error = Duplicate(files, source, target);
    if (!error) {
        error = files.RemoveFile(source);
        // When neither works, the old file has its second name only: deleting that would lose it.
        if (error && Duplicate(files, old, target)) return error;
    }
    Ignore(files.RemoveFile(old));
    return error;
}

std::error_code MoveToNewName(FileSystem& files, const std::string& source, const std::string& target) {
    auto error = files.Rename(source, target);
    if (error != std::errc::cross_device_link) return error;
    error = files.Copy(source, target, {.keepLink = true, .flush = true});
    if (error) return error;
    error = files.RemoveFile(source);
    if (error) Ignore(files.RemoveFile(target));
    return error;
}

/// The entries of one destination by folded name, whatever spellings the folder itself has. Of two spellings
/// of one file the last one listed counts, as in an installation.
class Destination {
public:
    explicit Destination(const std::vector<ListedFolder>& folders) {
        for (const auto& folder : folders)
            for (const auto& entry : folder.entries)
                taken_[FoldCase(entry.name)] = {Join(folder.path, entry.name), IsReplaceable(entry)};
    }

    bool Take(FileSystem& files, const std::string& source, const std::string& folder) {
        const auto target = Join(folder, LastComponent(source));
        const auto [at, isNew] = taken_.try_emplace(FoldCase(LastComponent(source)));
        auto& [existing, isReplaceable] = at->second;
        if (isNew) {
            const bool moved = !MoveToNewName(files, source, target);
            if (!moved) taken_.erase(at);
            return moved;
        }
        if (!isReplaceable || MoveOver(files, source, existing)) return false;
        isReplaceable = false;
        const auto spelled = Join(Parent(existing), LastComponent(source));
        if (spelled != existing) Ignore(files.Rename(existing, spelled));
        return true;
    }

private:
    struct Existing {
        std::string path;
        bool isReplaceable = false;
    };
    std::unordered_map<std::string, Existing> taken_;
};

/// Whether a destination is the base folder itself, by a link or a mount: there each file would replace
/// itself.
Result<bool> LeadsBack(const FileSystem& files, const std::string& folder, const std::string& base) {
    const auto real = files.RealPath(folder);
    if (!real) return real.Error();
    const auto realBase = files.RealPath(base);
    if (!realBase) return realBase.Error();
    const auto info = files.Stat(folder);
    if (!info) return info.Error();
    const auto baseInfo = files.Stat(base);
    if (!baseInfo) return baseInfo.Error();
    return *real == *realBase || (info->id && info->id == baseInfo->id);
}

/// A folder that is not among the listed ones may be new, or was there and could not be listed. None when it
/// still cannot: a file in another spelling would go unnoticed.
std::optional<Destination> OpenDestination(const FileSystem& files, const std::vector<ListedFolder>& listed,
                                           const std::string& folder) {
    if (!listed.empty()) return Destination(listed);
    auto entries = files.List(folder, Detail::Names);
    if (!entries) return std::nullopt;
    return Destination({{folder, std::move(*entries)}});
}

} // namespace

LooseFiles ListLooseFiles(const FileSystem& files, std::string_view folder) {
    LooseFiles loose{std::string(folder), {}, {}};
    if (folder.empty()) return loose;
    const auto entries = files.List(folder, Detail::Names);
    if (!entries) return loose;
    const OdfNames odfs(*entries);
    for (const auto& entry : *entries) {
        if (!entry.IsPlainFile()) continue;
        LooseFile file{entry.name, {}, odfs.HasOdf(entry.name)};
        if (EndsFolded(entry.name, kOdfEnding))
            file.odfClasses = OdfIncludesClass(files, Join(folder, entry.name));
        for (std::size_t type = 0; type < kLooseFileTypeCount; ++type)
            if (LooseFileTypes[type].isOffered && LooseFileTypes[type].Matches(file))
                loose.byType[type].push_back({loose.names.size()});
        loose.names.push_back(entry.name);
    }
    return loose;
}

SortPlan PlanSorting(const FileSystem& files, const LooseFiles& loose, const TypeChecks& checks,
                     std::string_view gameDirectory) {
    SortPlan plan{ListKnownFolders(files, loose.folder, Detail::Names), {}, {}, {}, {}, {}};
    const auto game = files.RealPath(gameDirectory);
    const auto base = files.RealPath(loose.folder);
    const auto library = files.RealPath(Parent(loose.folder)).ValueOr({});
    if (game && base) plan.wayIntoGame = FindWayIntoGame(files, *base, plan.folders, library, *game);
    if (!plan.wayIntoGame.empty()) return plan;
    AddLeftovers(plan.folders, plan.leftoverFiles);
    const auto chosen = ChooseTypes(loose, checks);
    if (plan.folders.back().empty()) {
        for (const auto& name : loose.names)
            if (chosen.contains(name)) plan.notListed.push_back(name);
        return plan;
    }

    const auto& listing = plan.folders.back().front().entries;
    const OdfNames odfs(listing);
    const auto untyped = FindUntyped(loose);
    std::vector<LooseMove> others;
    for (const auto& entry : listing) {
        if (untyped.contains(entry.name)) plan.untyped.push_back(entry.name);
        const auto found = entry.IsPlainFile() ? chosen.find(entry.name) : chosen.end();
        if (found == chosen.end()) continue;
        const auto& type = LooseFileTypes[found->second];
        if (type.needsOdf && !odfs.HasOdf(entry.name)) continue;
        (type.needsOdf ? plan.moves : others).push_back({entry.name, PositionOfFolder(type.destination)});
    }
    std::ranges::move(others, std::back_inserter(plan.moves));
    return plan;
}

SortResult RunSorting(FileSystem& files, const SortPlan& plan) {
    SortResult result{0, plan.notListed, {}};
    if (plan.folders.back().empty() || !plan.wayIntoGame.empty()) return result;
    for (const auto& path : plan.leftoverFiles)
        Ignore(files.RemoveFile(path));
    const auto& base = plan.folders.back().front().path;
    FolderMaker maker(files, base, plan.folders);
    std::array<bool, kGameFolderCount> filled{};
    std::array<std::optional<Destination>, kGameFolderCount> destinations;
    for (const auto& [name, position] : plan.moves) {
        const auto folder = maker.Ensure(position);
        auto& destination = destinations[position];
        if (folder && !destination) {
            const auto leadsBack = LeadsBack(files, *folder, base);
            if (leadsBack && *leadsBack) result.leadsBack = *folder;
            if (leadsBack && !*leadsBack)
                destination = OpenDestination(files, plan.folders[position], *folder);
        }
        if (folder && destination && destination->Take(files, Join(base, name), *folder)) {
            filled[position] = true;
            ++result.moved;
        } else {
            result.notMoved.push_back(name);
        }
    }
    RemoveEmptyKnownFolders(files, plan.folders, maker, filled);
    return result;
}

} // namespace quillbay
