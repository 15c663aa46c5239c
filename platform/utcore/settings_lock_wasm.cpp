#include "platform/utcore/settings_lock.h"

namespace ut {

// A module has one thread.
SettingsLock::SettingsLock() {}
SettingsLock::~SettingsLock() {}

}  // namespace ut
