#pragma once

#include "catalogue/FinderActions.h"
#include "common/window/OutcomeText.h"

#include <QString>

namespace quillbay {

/// What an action of the finder has done; the tool tip says why, where something was not done.
OutcomeText Describe(const FileActionPlan& plan, const FileActionResult& result);

/// What a message box must tell of it; empty when all went well.
QString Complaint(const FileActionPlan& plan, const FileActionResult& result);

/// The files that are left out because they are as recorded; empty without any.
QString TellUnchanged(const FileActionPlan& plan);

/// A line for each file of the plan that is there.
QString ListedFiles(const FileActionPlan& plan);

} // namespace quillbay
