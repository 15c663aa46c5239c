/// Audits as people read them.
#pragma once

#include <string>

#include <platen/audit.h>
#include "tools/platen/console/console.h"

namespace cli::words {

/// The shell that people on this system paste commands into.
platen::Shell shellOfThisSystem();

/// The findings, those of one code below each other.
void printFindings(const platen::AuditResult& result, const Console& console);

/// "7 findings in 12 files (8 plot configurations, ...)", and what was not looked at.
void printSummary(const platen::AuditResult& result, const Console& console);

}  // namespace cli::words
