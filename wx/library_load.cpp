/// Part of the shared library alone: documents get wxWidgets' log and translations when it is
/// loaded. A program that links the static libraries registers what it wants.

#include <platen/wx_layer.h>

namespace {

class Registration {
public:
    Registration() { wut::registerWxLayer(); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { wut::unregisterWxLayer(); }
};

// Before everything else in the library: the descriptions of the built-in devices are translated
// when their table is made, which is at load, too. (Priorities up to 100 are the compiler's.)
__attribute__((init_priority(101))) const Registration registration;

}  // namespace
