/// The system's browser, and what a page for it needs of the system.
#pragma once

#include <string>

namespace cli::files {

/// Where this program is; empty when the system does not say.
std::wstring folderOfProgram();

/// A new folder for temporary files that only this user can read; empty when there is none.
std::wstring newTemporaryFolder();

/// Opens a file in the browser, and does not wait for it. False when there is none.
bool openInBrowser(const std::wstring& file);

}  // namespace cli::files
