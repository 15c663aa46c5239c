#include <windows.h>

#include <platen/utcore_host.h>

namespace ut {

DynamicLibrary::DynamicLibrary(const wchar_t* name, int) {
    // The default folders are those of the program and of the system: neither the current folder
    // nor those of PATH. A library with a path is also looked for its own libraries beside it.
    const bool hasFolder =
        std::wstring_view(name).find_first_of(L"/\\:") != std::wstring_view::npos;
    const std::wstring path = hasFolder ? FileName(name).getFullPath() : name;
    const DWORD folders = hasFolder
                              ? LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS
                              : LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;
    library_.reset(LoadLibraryExW(path.c_str(), nullptr, folders));
}

void* DynamicLibrary::symbol(const char* name) const {
    return library_ == nullptr ? nullptr
                               : reinterpret_cast<void*>(
                                     GetProcAddress(static_cast<HMODULE>(library_.get()), name));
}

void DynamicLibrary::Unloader::operator()(void* library) const noexcept {
    FreeLibrary(static_cast<HMODULE>(library));
}

}  // namespace ut
