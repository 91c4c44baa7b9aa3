#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace quillbay {

/// The program's UTF-8 as a QString. A byte that is not UTF-8 (file names on POSIX) becomes the lone
/// surrogate U+DC00 + byte, which FromQString turns back, so that every name survives the way there and back.
QString ToQString(std::string_view text);
std::string FromQString(const QString& text);

/// A path as the user knows it, for texts that are not read back: with the separators of this system where it
/// is absolute; one below the game or a mod stays as the lists spell it.
QString ShownPath(std::string_view path);

} // namespace quillbay
