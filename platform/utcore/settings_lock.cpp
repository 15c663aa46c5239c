#include "platform/utcore/settings_lock.h"

#include <mutex>

namespace ut {

namespace {

/// Made at first use: not every standard library can have one without running code.
std::mutex& settingsMutex() {
    static std::mutex mutex;
    return mutex;
}

}  // namespace

SettingsLock::SettingsLock() { settingsMutex().lock(); }
SettingsLock::~SettingsLock() { settingsMutex().unlock(); }

}  // namespace ut
