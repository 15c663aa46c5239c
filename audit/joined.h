/// What is found when the files of an audit are looked at together.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <platen/audit.h>
#include "audit/record.h"

namespace platen {

/// In the order in which programs find them.
using AuditedFiles = std::vector<std::unique_ptr<const AuditData>>;

/// PMPs that are missing, elsewhere or of no use, and their papers; paths of this machine.
void joinPmps(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result);
/// Printers that are missing or on a server, and what only their drivers know.
void joinPrinters(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result);
/// Files that hide others of their name.
void joinNames(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result);
/// Tables and standards that are missing, and tables that nobody names.
void joinTables(const AuditedFiles& files, const AuditStandards& standards,
                const AuditSettings& settings, AuditResult& result);
/// Papers of one size with several names.
void joinPapers(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result);

/// A finding about several files, of which there is at least one.
AuditFinding findingAbout(const std::vector<const AuditData*>& files, AuditCode code,
                          std::string message);

}  // namespace platen
