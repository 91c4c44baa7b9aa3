#pragma once

#include "library/WriteRefusal.h"

#include <QString>

namespace quillbay {

class LibraryHost;

/// Says that nothing can be written there and what the user can do; `sentence`, which may be empty, stands
/// above. Where more rights are to be had the box offers to start the program with them, and then this one
/// ends.
void TellNoRights(LibraryHost& main, const WriteRefusal& refusal, const QString& sentence = {});

} // namespace quillbay
