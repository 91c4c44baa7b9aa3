#pragma once

#include "common/window/OutcomeText.h"

#include <QString>

namespace quillbay {

class OdfCheckRun;
struct OdfPlace;

/// What a check has come to, in one sentence; its tool tip names the files that were not checked, and where
/// errors were left. A check that did not come to its end says so; the error at which it stands is one of
/// those left.
OutcomeText Describe(const OdfCheckRun& run, bool isWhole);

/// The file's full path and the line, counted from 1.
QString ShownPlace(const OdfPlace& place);

} // namespace quillbay
