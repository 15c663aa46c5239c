/// The answers of `info --json` and `check --json`: one JSON object, without a line feed.
#pragma once

#include <optional>
#include <string>

#include <platen/pia.h>
#include "tools/platen/findings.h"
#include "tools/platen/recognise.h"

namespace platen {

std::string infoLine(const std::string& file, const PiaContainer& container,
                     const Content& content);

/// `kind` is empty when the file could not be read.
std::string checkLine(const std::string& file, std::optional<FileKind> kind,
                      const FindingList& findings);

}  // namespace platen
