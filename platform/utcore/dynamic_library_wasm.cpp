#include <platen/utcore_host.h>

namespace ut {

// A module loads no other one: every library is missing.
DynamicLibrary::DynamicLibrary(const wchar_t* /*name*/, int /*mode*/) {}

void* DynamicLibrary::symbol(const char* /*name*/) const { return nullptr; }

void DynamicLibrary::Unloader::operator()(void* /*library*/) const noexcept {}

}  // namespace ut
