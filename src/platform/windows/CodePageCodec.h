#pragma once

#include "platform/CodePage.h"

#include <string>
#include <string_view>

namespace quillbay {

/// Text in one Windows code page, as CodePage.h promises it for the system's own. A character that the code
/// page holds twice keeps its bytes: the second sequence travels as private code points too.
class CodePageCodec {
public:
    explicit CodePageCodec(unsigned codePage) : codePage_(codePage) {}

    std::string Decode(std::string_view bytes) const;
    EncodedText Encode(std::string_view text) const;

private:
    std::string DecodeOneByOne(std::string_view bytes) const;
    bool DecodeExactly(std::string_view bytes, std::wstring& wide) const;
    bool EncodeExactly(std::wstring_view wide, std::string& bytes) const;
    std::size_t CharLength(std::string_view bytes) const;

    unsigned codePage_;
};

} // namespace quillbay
