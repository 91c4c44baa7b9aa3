#include "catalogue/FileCatalogue.h"
#include "catalogue/FileList.h"
#include "library/GameFolders.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

/// Whatever stands before it, a block that follows is read. The name is too long for an input to hold it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string name(size + 1, 'n');
    const std::size_t records = quillbay::CountRecords(bytes).records;
    bytes += "\rfolder = 'rootdir'\r\n" + name + ";5;11/3/2001 12:37:30 AM\r\n";
    if (quillbay::CountRecords(bytes).records != records + 1) std::abort();

    const quillbay::FileCatalogue catalogue(bytes);
    const auto* record = catalogue.Find(quillbay::kKnownFolderCount, name);
    if (!record || record->size != 5) std::abort();
    return 0;
}
