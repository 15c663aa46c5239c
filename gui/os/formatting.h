/// Where the C library's complaints about formatting go.
#pragma once

namespace wut {

using FormattingHook = void (*)(const wchar_t* reason);

/// Sends them to `hook`, or back to where they went before when it is null. Called with another
/// state than the last time.
void hookFormatting(FormattingHook hook);

}  // namespace wut
