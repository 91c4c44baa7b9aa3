#include "odf/OdfCheckRun.h"

#include "odf/OdfFile.h"
#include "odf/OdfRepair.h"
#include "odf/RaceList.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <utility>

namespace quillbay {

OdfCheckRun::OdfCheckRun(FileSystem& files, std::string odfFolder)
    : files_(files), odfFolder_(std::move(odfFolder)) {
    Prepare();
}

void OdfCheckRun::Prepare() {
    ReadFailure unread;
    folders_ = ListOdfFolders(files_, odfFolder_, &unread);
    if (unread && std::ranges::find(passedOver_, unread.path) == passedOver_.end())
        passedOver_.push_back(std::move(unread.path));
    odfs_ = 0;
    for (const auto& odfs : folders_.odfs)
        odfs_ += odfs.size();
    auto races = BuildRaceList(files_, odfFolder_);
    around_ = {OdfIndex(folders_),
               {std::make_move_iterator(races.begin()), std::make_move_iterator(races.end())}};
    error_.reset();

    waiting_ = std::move(folders_.odfs[folderIndex_]);
    std::erase_if(waiting_, [&](const std::string& path) { return finished_.contains(path); });
    const auto current = std::ranges::find(waiting_, current_);
    if (current != waiting_.end()) std::rotate(waiting_.begin(), current, current + 1);
    next_ = 0;
}

void OdfCheckRun::CheckAgain() {
    finished_.erase(current_);
    --filesChecked_;
    if (std::exchange(currentCounts_, false)) --checked_;
    checkedAgain_ = std::move(error_);
    Prepare();
}

void OdfCheckRun::SkipFile() {
    finished_.insert(current_);
    ++filesChecked_;
    ++checked_;
    ignored_.push_back({current_, error_->line});
    Prepare();
}

bool OdfCheckRun::EnterFolderWithFiles() {
    while (next_ == waiting_.size()) {
        if (folderIndex_ + 1 == folders_.odfs.size()) return false;
        waiting_ = std::move(folders_.odfs[++folderIndex_]);
        next_ = 0;
        finished_.clear();
    }
    return true;
}

OdfCheckRun::Step OdfCheckRun::Next(const OdfCheckOptions& options) {
    if (!EnterFolderWithFiles()) return Step::End;
    current_ = waiting_[next_++];
    currentCounts_ = false;
    // A file that could not be read may be readable when it is met again.
    if (!passedOver_.empty() && passedOver_.back() == current_) passedOver_.pop_back();
    if (auto bytes = ReadOdf(files_, current_)) {
        if (auto failed = CheckFile(*bytes, options)) {
            error_ = OdfError{std::move(*failed), current_, std::move(*bytes)};
            return Step::Error;
        }
        FinishFile(*bytes);
    } else {
        passedOver_.push_back(current_);
    }
    finished_.insert(current_);
    ++filesChecked_;
    return Step::FileDone;
}

void OdfCheckRun::FinishFile(const std::string& bytes) {
    currentCounts_ = true;
    ++checked_;
    const auto before = std::exchange(checkedAgain_, std::nullopt);
    if (!before || before->path != current_) return;
    if (bytes != before->bytes)
        ++repaired_;
    else
        ignored_.push_back({current_, before->line});
}

std::optional<FailedOdfCheck> OdfCheckRun::CheckFile(std::string& bytes, const OdfCheckOptions& options) {
    if (options.removeUnusedLines) {
        if (auto kept = RemoveUnusedLines(bytes)) {
            if (ReplaceOdf(files_, current_, *kept)) {
                passedOver_.push_back(current_);
            } else {
                bytes = std::move(*kept);
                ++rewritten_;
            }
        }
    }
    return CheckOdfText(DecodeSystemText(bytes), options.checks, around_);
}

std::size_t OdfCheckRun::ShownFiles() const {
    return static_cast<std::size_t>(
        std::clamp(filesChecked_ - 1, 0LL, static_cast<long long>(folders_.totalFiles)));
}

} // namespace quillbay
