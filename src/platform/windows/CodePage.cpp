#include "platform/CodePage.h"

#include "platform/windows/CodePageCodec.h"

#include <windows.h>

namespace quillbay {

std::string DecodeSystemText(std::string_view bytes) { return CodePageCodec(GetACP()).Decode(bytes); }

EncodedText EncodeSystemText(std::string_view text) { return CodePageCodec(GetACP()).Encode(text); }

} // namespace quillbay
