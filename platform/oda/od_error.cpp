#include "platform/oda/od_error.h"

#include <new>

#include <platen/oda.h>

void odThrowInvalidIndex() { throw OdError_InvalidIndex(); }

void odReportingMemory(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        constexpr int outOfMemory = 9;
        throw OdError(outOfMemory);
    }
}
