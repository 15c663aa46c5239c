/// What the child does differently on each system.
#pragma once

#include <string>

unsigned long ownProcessId();

/// Starts `program` with two arguments and does not wait for it.
void startProgram(const std::string& program, const std::string& first, const std::string& second);

/// How this process was started, a fact a line.
std::string howStarted();
