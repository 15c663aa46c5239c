/// The SDK's errors where exceptions are to be had, and the end of the program where they are not.
#pragma once

#include <functional>

/// Runs `work`. When there is no memory for it, `OdError` with the SDK's code for that is thrown.
void odReportingMemory(const std::function<void()>& work);
