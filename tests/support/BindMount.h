#pragma once

#include "support/TempFolder.h"

#include <sched.h>
#include <string>
#include <string_view>
#include <sys/mount.h>

namespace quillbay::test {

/// Shows a folder a second time at the place of another one, for this process alone. Only root may do that.
class BindMount {
public:
    BindMount(std::string_view folder, std::string_view place) : place_(DiskText(place)) {
        isMounted_ = ::unshare(CLONE_NEWNS) == 0 &&
                     ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                     ::mount(DiskText(folder).c_str(), place_.c_str(), nullptr, MS_BIND, nullptr) == 0;
    }
    BindMount(const BindMount&) = delete;
    BindMount& operator=(const BindMount&) = delete;
    ~BindMount() {
        if (isMounted_) ::umount2(place_.c_str(), MNT_DETACH);
    }

    explicit operator bool() const { return isMounted_; }

private:
    std::string place_;
    bool isMounted_ = false;
};

} // namespace quillbay::test
