/// A text as a file that the C library reads.
#pragma once

#include <cstdio>
#include <string_view>

/// Never null; the caller closes it. The text is to stay as long.
std::FILE* openTextInMemory(std::string_view text);
