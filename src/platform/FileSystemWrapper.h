#pragma once

#include "platform/FileSystemLayer.h"

#include <string_view>

namespace quillbay {

/// Changes nothing by itself; who derives from it overrides only what is to differ.
class FileSystemWrapper : public FileSystemLayer<FileSystemWrapper> {
public:
    using FileSystemLayer::FileSystemLayer;

private:
    friend FileSystemLayer;

    template <typename Operation>
    auto Reading(std::string_view, std::string_view, std::string_view, Operation operation) const {
        return operation();
    }
    template <typename Operation>
    auto Writing(std::string_view, std::string_view, std::string_view, Operation operation) {
        return operation();
    }
};

} // namespace quillbay
