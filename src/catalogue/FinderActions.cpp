#include "catalogue/FinderActions.h"

#include "library/FolderMaker.h"
#include "library/ModFiles.h"
#include "platform/PathText.h"

namespace quillbay {

namespace {

using Cause = FileActionRefusal::Cause;

/// Looks the names up in what was listed: they come folder by folder, as EntryIndex wants them.
void FindItems(FileActionPlan& plan, const KnownFolders& game, const std::vector<std::string>& names,
               const FileCatalogue* catalogue) {
    EntryIndex inGame(game);
    EntryIndex inDestination(plan.destinationFolders);
    for (const std::string& name : names) {
        const std::string_view file = LastComponent(name);
        const auto position = PositionOfFolder(std::string_view(name).substr(0, name.size() - file.size()));
        const DirEntry* source = position < kGameFolderCount ? inGame.Find(position, file) : nullptr;
        if (source && source->kind != EntryKind::File) source = nullptr;
        if (source && catalogue && catalogue->Compare(position, *source) == FileChange::None) {
            plan.unchanged.push_back(name);
            continue;
        }
        FileActionItem item;
        item.name = name;
        item.position = position;
        if (source) {
            item.from = inGame.PathOf(position, *source);
            item.isLink = source->isLink;
            if (const DirEntry* target = inDestination.Find(position, file)) {
                item.existing = inDestination.PathOf(position, *target);
                item.folderInTheWay = target->kind == EntryKind::Folder;
            }
        }
        const bool stays = plan.action == FileAction::Move && !item.existing.empty() && !item.folderInTheWay;
        if (stays)
            plan.kept.push_back(name);
        else
            plan.items.push_back(std::move(item));
    }
}

/// Lists the destination; whether there is one comes out when it is made.
std::optional<FileActionRefusal> ReadDestination(FileActionPlan& plan, const FileSystem& files,
                                                 const std::string& game) {
    const auto real = files.RealPath(plan.destination);
    if (!real && real.Error() == std::errc::no_such_file_or_directory) return {};
    if (!real) return FileActionRefusal{Cause::NoDestination, plan.destination, real.Error()};
    if (*real == game) return FileActionRefusal{Cause::DestinationIsGame, *real, {}};
    plan.destination = *real;
    ReadFailure failure;
    plan.destinationFolders = ListKnownFolders(files, *real, Detail::Names, &failure);
    if (failure) return FileActionRefusal{Cause::NoDestination, failure.path, failure.error};
    return {};
}

/// A link is not renamed: what it leads to is what the destination is to have.
std::error_code MoveFile(FileSystem& files, const FileActionItem& item, const std::string& to) {
    if (!item.isLink) {
        const std::error_code error = files.Rename(item.from, to);
        if (error != std::errc::cross_device_link) return error;
    }
    if (const auto error = files.Copy(item.from, to, {.flush = true})) return error;
    return files.RemoveFile(item.from);
}

std::error_code CopyOrMove(FileSystem& files, FileAction action, const FileActionItem& item,
                           FolderMaker& folders) {
    if (item.folderInTheWay) return std::make_error_code(std::errc::is_a_directory);
    const auto folder = folders.Ensure(item.position);
    if (!folder) return folder.Error();
    const std::string to = item.existing.empty() ? Join(*folder, LastComponent(item.from)) : item.existing;
    return action == FileAction::Move ? MoveFile(files, item, to)
                                      : files.Copy(item.from, to, {.replace = true});
}

void RunItems(FileActionResult& result, const FileActionPlan& plan,
              const std::function<std::error_code(const FileActionItem&)>& run,
              const std::function<void(std::size_t, std::size_t)>& progress) {
    for (const FileActionItem& item : plan.items) {
        const std::error_code error =
            item.from.empty() ? std::make_error_code(std::errc::no_such_file_or_directory) : run(item);
        if (!error) {
            ++result.done;
        } else {
            if (result.failed.empty()) result.firstError = error;
            result.failed.push_back(item.name);
        }
        progress(result.done + result.failed.size(), plan.items.size());
    }
}

} // namespace

FileActionPlan PlanFileAction(const FileSystem& files, FileAction action, std::string_view gameDirectory,
                              std::string_view destination, const std::vector<std::string>& names,
                              const FileCatalogue* catalogue) {
    FileActionPlan plan;
    plan.action = action;
    plan.destination = destination;
    const auto game = files.RealPath(gameDirectory);
    if (!game) {
        plan.refusal = {Cause::GameUnreadable, std::string(gameDirectory), game.Error()};
        return plan;
    }
    ReadFailure failure;
    const Detail detail = catalogue ? Detail::Full : Detail::Names;
    const KnownFolders gameFolders = ListKnownFolders(files, *game, detail, &failure);
    if (failure)
        plan.refusal = {Cause::GameUnreadable, failure.path, failure.error};
    else if (action != FileAction::Delete)
        plan.refusal = ReadDestination(plan, files, *game);
    if (!plan.refusal) FindItems(plan, gameFolders, names, catalogue);
    return plan;
}

FileActionResult RunFileAction(FileSystem& files, const FileActionPlan& plan,
                               const std::function<void(std::size_t, std::size_t)>& progress) {
    FileActionResult result;
    result.refusal = plan.refusal;
    if (result.refusal) return result;
    if (plan.action == FileAction::Delete) {
        RunItems(
            result, plan, [&](const FileActionItem& item) { return files.RemoveFile(item.from); }, progress);
        return result;
    }

    if (const auto error = files.MakeFolder(plan.destination)) {
        result.refusal = {Cause::NoDestination, plan.destination, error};
        return result;
    }
    FolderMaker folders(files, plan.destination, plan.destinationFolders);
    for (std::size_t position = 0; position < kKnownFolderCount; ++position)
        Ignore(folders.Ensure(position).Error());
    RunItems(
        result, plan,
        [&](const FileActionItem& item) { return CopyOrMove(files, plan.action, item, folders); }, progress);
    for (std::size_t position = kKnownFolderCount; position-- > 0;)
        if (const auto folder = folders.Ensure(position)) Ignore(files.RemoveEmptyFolder(*folder));
    return result;
}

} // namespace quillbay
