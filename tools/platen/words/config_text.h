/// A plot configuration in words.
#pragma once

#include <iosfwd>

#include <platen/inspect.h>
#include <platen/pmp.h>

namespace cli::words {

/// Which driver and model a "meta" block is about.
void describeMeta(const CMetaNode& meta, std::ostream& out);

/// The settings of `content.config`, one line each.
void describeConfig(const platen::Content& content, std::ostream& out);

}  // namespace cli::words
