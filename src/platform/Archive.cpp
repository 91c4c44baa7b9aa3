#include "platform/Archive.h"

namespace quillbay {

namespace {

class ArchiveCategory : public std::error_category {
public:
    const char* name() const noexcept override { return "archive"; }
    std::string message(int error) const override {
        switch (static_cast<ArchiveError>(error)) {
        case ArchiveError::Unknown:
            return "It is no archive of a known format";
        case ArchiveError::Broken:
            return "The archive is damaged, or packed in a way that is not known here";
        case ArchiveError::Encrypted:
            return "The archive is protected by a password";
        case ArchiveError::PartOfSet:
            return "The archive is a part of a set of several files";
        }
        return "Unknown error";
    }
};

} // namespace

std::error_code make_error_code(ArchiveError error) {
    static const ArchiveCategory category;
    return {static_cast<int>(error), category};
}

} // namespace quillbay
