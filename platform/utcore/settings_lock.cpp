#include "platform/utcore/settings_lock.h"

#include <mutex>

namespace ut {

namespace {

constinit std::mutex settingsMutex;

}  // namespace

SettingsLock::SettingsLock() { settingsMutex.lock(); }
SettingsLock::~SettingsLock() { settingsMutex.unlock(); }

}  // namespace ut
