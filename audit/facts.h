/// What an audit takes from the document of one file, while it is there.
#pragma once

#include <platen/audit.h>
#include <platen/pia.h>
#include "audit/record.h"

namespace platen {

void noteConfiguration(const CPlotCfg3& config, const AuditSettings& settings, AuditData& data);
void noteParameters(const PlotModelParam& parameters, AuditData& data);

/// Pens that nobody can tell apart on paper.
void findPensAlike(const CPlotStyleTable& table, const AuditSettings& settings, AuditData& data);

/// Names that machines with another code page read differently.
void findNamesNotAscii(const PiaInput& input, const AuditSettings& settings, AuditData& data);

/// What is different from the standard for this file, if there is one.
void compareWithStandard(const PiaInput& input, const AuditStandards& standards,
                         const AuditSettings& settings, AuditData& data);

}  // namespace platen
