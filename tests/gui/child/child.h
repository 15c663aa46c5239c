/// What the child does differently on each system.
#pragma once

#include <string>

unsigned long ownProcessId();

/// How this process was started, a fact a line.
std::string howStarted();
