#include "platform/oda/od_error.h"

#include <cstdlib>

#include <platen/oda.h>

void odThrowInvalidIndex() { std::abort(); }

void odReportingMemory(const std::function<void()>& work) { work(); }
