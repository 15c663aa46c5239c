#include <dlfcn.h>

#include <platen/utcore.h>
#include <platen/utcore_host.h>

namespace ut {

DynamicLibrary::DynamicLibrary(const wchar_t* name, int mode)
    // A name without a slash is looked for in the folders of libraries alone. An empty one would
    // stand for the program itself.
    : library_(*name == L'\0'
                   ? nullptr
                   : ::dlopen(encodePath(name).c_str(), (mode & Now) != 0 ? RTLD_NOW : RTLD_LAZY)) {
}

void* DynamicLibrary::symbol(const char* name) const {
    return library_ == nullptr ? nullptr : ::dlsym(library_.get(), name);
}

void DynamicLibrary::Unloader::operator()(void* library) const noexcept { ::dlclose(library); }

}  // namespace ut
