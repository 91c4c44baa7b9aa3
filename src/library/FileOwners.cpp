#include "library/FileOwners.h"

#include <algorithm>

namespace quillbay {

namespace {

/// True when a file that the system says has changed at `changed` certainly has not after `moment`, both in
/// nanoseconds. Systems take the time of a change from a clock that runs up to some hundredths of a second
/// late, and file systems that keep whole seconds round it down, FAT to even ones.
bool IsBefore(std::int64_t changed, std::int64_t moment) {
    constexpr std::int64_t kSecond = 1'000'000'000;
    const std::int64_t late = changed % kSecond == 0 ? 2 * kSecond : kSecond / 20;
    return changed > 0 && changed + late <= moment;
}

} // namespace

const Result<FileInfo>& LookedAtFile::Info() {
    if (!info_) info_ = files_.StatContents(path_);
    return *info_;
}

Result<bool> LookedAtFile::Holds(const RecordedFile& recorded, std::int64_t finished) {
    if (isLink_) return false;
    const auto& info = Info();
    if (!info) return info.Error();
    const auto& present = recorded.versions.back();
    const bool isUntouched = recorded.state == RecordedState::Copied && IsBefore(info->changed, finished);
    if (isUntouched && present.size == info->size && present.modified == info->modified) return true;
    return ReadsAsAnyOf(recorded);
}

Result<bool> LookedAtFile::ReadsAsAnyOf(const RecordedFile& recorded) {
    if (isLink_) return false;
    const auto found = Find(recorded.versions, [](const FileVersion&) { return true; });
    if (!found) return found.Error();
    return *found != nullptr;
}

Result<bool> LookedAtFile::HoldsSaved(const RecordedFile& recorded, std::int64_t savedBy) {
    const auto found = FindSaved(recorded, savedBy);
    if (!found) return found.Error();
    return *found != nullptr;
}

Result<const FileVersion*> LookedAtFile::FindSaved(const RecordedFile& recorded, std::int64_t savedBy) {
    if (isLink_) return nullptr;
    return Find(recorded.versions, [savedBy](const FileVersion& version) {
        return version.installed < savedBy && (version.until == 0 || savedBy <= version.until);
    });
}

Result<const FileVersion*> LookedAtFile::Find(const std::vector<FileVersion>& versions,
                                              const std::function<bool(const FileVersion&)>& counts) {
    const auto& info = Info();
    if (!info) return info.Error();
    const auto mayBe = [&](const FileVersion& version) {
        return version.size == info->size && counts(version);
    };
    if (std::ranges::none_of(versions, mayBe)) return nullptr;
    if (!bytes_) bytes_ = files_.FingerprintFile(path_);
    if (!*bytes_) return bytes_->Error();
    const auto found = std::ranges::find_if(
        versions, [&](const FileVersion& version) { return mayBe(version) && version.bytes == **bytes_; });
    return found == versions.end() ? nullptr : &*found;
}

bool LookedAtFile::Resembles(const RecordedFile& recorded) {
    const auto& info = Info();
    return !isLink_ && info && std::ranges::any_of(recorded.versions, [&](const FileVersion& version) {
        return version.size == info->size && version.modified == info->modified;
    });
}

Result<bool> LookedAtFile::Equals(const std::string& other, bool otherIsLink) {
    if (isLink_ != otherIsLink) return false;
    if (!isLink_) return files_.SameContents(path_, other);
    const auto text = files_.ReadLink(path_);
    const auto otherText = files_.ReadLink(other);
    if (!text) return text.Error();
    if (!otherText) return otherText.Error();
    return *text == *otherText;
}

bool LookedAtFile::IsSameFileAs(const std::string& other) {
    if (const auto& info = Info(); !info || info->links < 2) return false;
    const auto own = files_.Stat(path_);
    const auto others = files_.Stat(other);
    return own && others && own->id && own->id == others->id;
}

std::int64_t SavedBy(const InstalledMod& mod, const RecordedFile* recorded) {
    return recorded && recorded->saved > 0 ? recorded->saved : mod.order;
}

/// A folder with its known folders, listed when it is first asked for.
struct FileOwners::Listing {
    std::optional<KnownFolders> folders;
    std::optional<EntryIndex> index;
    ReadFailure failure;
};

struct FileOwners::Mod {
    explicit Mod(const InstalledMod& installed) : mod(installed) {
        if (installed.record) record.emplace(installed.record->files);
    }

    const InstalledMod& mod;
    std::optional<RecordIndex> record;
    Listing present; ///< without a record the mod's present files are what it has installed
    Listing saved;
};

FileOwners::FileOwners(const FileSystem& files, const std::vector<InstalledMod>& mods) : files_(files) {
    for (const auto& mod : mods)
        mods_.push_back(std::make_unique<Mod>(mod));
}

FileOwners::~FileOwners() = default;

EntryIndex& FileOwners::IndexOf(Listing& listing, const std::string& root) {
    if (!listing.index) {
        listing.folders.emplace(ListKnownFolders(files_, root, Detail::Names, &listing.failure));
        listing.index.emplace(*listing.folders);
    }
    return *listing.index;
}

Result<const InstalledMod*> FileOwners::FindOwner(LookedAtFile& file, std::size_t position,
                                                  std::string_view name, std::int64_t after) {
    for (const auto& mod : mods_) {
        if (mod->mod.order <= after) continue;
        if (mod->record) {
            const auto* recorded = mod->record->Find(position, name);
            if (!recorded) continue;
            const auto holds = file.Holds(*recorded, mod->mod.record->finished);
            if (!holds) return holds.Error();
            if (*holds) return &mod->mod;
            continue;
        }
        if (file.IsLink()) continue;
        auto& index = IndexOf(mod->present, mod->mod.folder);
        // What may be its file is not taken for nobody's.
        if (mod->present.failure) return mod->present.failure.error;
        const auto* entry = index.Find(position, name);
        if (!entry || !entry->IsPlainFile()) continue;
        const auto same = file.Equals(index.PathOf(position, *entry), false);
        if (!same) return same.Error();
        if (*same) return &mod->mod;
    }
    return nullptr;
}

const InstalledMod* FileOwners::GuessOwner(LookedAtFile& file, std::size_t position, std::string_view name) {
    for (const auto& mod : mods_) {
        const auto* recorded = mod->record ? mod->record->Find(position, name) : nullptr;
        if (recorded && file.Resembles(*recorded)) return &mod->mod;
    }
    return nullptr;
}

const DirEntry* FileOwners::FindSaved(Mod& mod, std::size_t position, std::string_view name,
                                      ReadFailure& failure) {
    const auto* copy = IndexOf(mod.saved, mod.mod.backup).Find(position, name);
    failure.Note(mod.saved.failure.path, mod.saved.failure.error);
    return copy && IsReplaceable(*copy) ? copy : nullptr;
}

const InstalledMod* FileOwners::FindSaver(std::size_t position, std::string_view name, ReadFailure& failure) {
    const InstalledMod* last = nullptr;
    for (const auto& mod : mods_)
        if (FindSaved(*mod, position, name, failure) && (!last || mod->mod.order > last->order))
            last = &mod->mod;
    return last;
}

bool FileOwners::IsSaved(LookedAtFile& file, std::size_t position, std::string_view name) {
    ReadFailure ignored; // what is not found saved is kept once more
    return std::ranges::any_of(mods_, [&](const auto& mod) {
        const auto* copy = FindSaved(*mod, position, name, ignored);
        if (!copy) return false;
        const auto path = mod->saved.index->PathOf(position, *copy);
        // Another name of the file itself is no second place.
        const auto same = file.Equals(path, copy->isLink);
        return same && *same && !file.IsSameFileAs(path);
    });
}

std::vector<std::pair<const InstalledMod*, const RecordedFile*>>
FileOwners::FindUnsavedOwners(LookedAtFile& file, std::size_t position, std::string_view name,
                              ReadFailure& failure) {
    std::vector<std::pair<const InstalledMod*, const RecordedFile*>> owners;
    for (const auto& mod : mods_) {
        const auto* recorded = mod->record ? mod->record->Find(position, name) : nullptr;
        if (!recorded || recorded->state == RecordedState::GivenBack ||
            FindSaved(*mod, position, name, failure))
            continue;
        const auto holds = file.Holds(*recorded, mod->mod.record->finished);
        failure.Note(file.Path(), holds.Error());
        if (holds && *holds && !IsSavedAfter(*mod, *recorded, name, failure))
            owners.emplace_back(&mod->mod, recorded);
    }
    return owners;
}

std::vector<std::pair<const InstalledMod*, const RecordedFile*>>
FileOwners::FindUnsavedClaims(LookedAtFile& copy, std::size_t position, std::string_view name,
                              ReadFailure& failure) {
    std::vector<std::pair<const InstalledMod*, const RecordedFile*>> claims;
    for (const auto& mod : mods_) {
        const auto* recorded = mod->record ? mod->record->Find(position, name) : nullptr;
        if (!recorded || FindSaved(*mod, position, name, failure)) continue;
        const auto reads = copy.ReadsAsAnyOf(*recorded);
        failure.Note(copy.Path(), reads.Error());
        if (reads && *reads) claims.emplace_back(&mod->mod, recorded);
    }
    return claims;
}

bool FileOwners::IsSavedAfter(const Mod& owner, const RecordedFile& recorded, std::string_view name,
                              ReadFailure& failure) {
    return std::ranges::any_of(mods_, [&](const auto& mod) {
        const auto* copy = mod.get() == &owner ? nullptr : FindSaved(*mod, recorded.position, name, failure);
        if (!copy) return false;
        LookedAtFile saved(files_, mod->saved.index->PathOf(recorded.position, *copy), copy->isLink);
        const auto* entry = mod->record ? mod->record->Find(recorded.position, name) : nullptr;
        const auto holds = saved.HoldsSaved(recorded, SavedBy(mod->mod, entry));
        failure.Note(saved.Path(), holds.Error());
        return holds && *holds;
    });
}

} // namespace quillbay
