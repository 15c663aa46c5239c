/// The settings are the process's, whichever of its threads asks.
#pragma once

namespace ut {

/// Held while the settings are read or changed.
class SettingsLock {
public:
    SettingsLock();
    SettingsLock(const SettingsLock&) = delete;
    SettingsLock& operator=(const SettingsLock&) = delete;
    ~SettingsLock();
};

}  // namespace ut
