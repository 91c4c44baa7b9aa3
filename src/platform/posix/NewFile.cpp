#include "platform/posix/NewFile.h"

#include "platform/posix/FileCopy.h"
#include "platform/posix/TempEntry.h"
#include "platform/posix/UniqueFd.h"

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillbay {

namespace {

class TempFileWriter : public FileWriter {
public:
    TempFileWriter(std::string path, NewFile traits) : temp_(std::move(path)), traits_(traits) {}

    std::error_code Start() {
        const mode_t mode = traits_.executable ? 0777 : 0666;
        return temp_.Make([&](const char* path) {
            file_ = UniqueFd(::open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
            return file_.Get();
        });
    }

    std::error_code Write(std::string_view bytes) override {
        return WriteAll(file_.Get(), bytes.data(), bytes.size());
    }

    std::error_code Commit() override {
        // Of a second attempt only the name is left to do.
        if (file_ && traits_.modified) {
            const timespec time{static_cast<time_t>(traits_.modified->time_since_epoch().count()), 0};
            const std::array<timespec, 2> times = {time, time};
            if (::futimens(file_.Get(), times.data()) != 0) return LastError();
        }
        if (file_ && ::close(file_.Release()) != 0) return LastError();
        return temp_.MoveToDestination(false);
    }

private:
    TempEntry temp_; // removed after the file is closed
    UniqueFd file_;
    NewFile traits_;
};

} // namespace

Result<std::unique_ptr<FileWriter>> StartFile(std::string path, NewFile traits) {
    auto writer = std::make_unique<TempFileWriter>(std::move(path), traits);
    if (const auto error = writer->Start()) return error;
    return std::unique_ptr<FileWriter>(std::move(writer));
}

} // namespace quillbay
