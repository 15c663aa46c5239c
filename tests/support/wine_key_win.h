/// The registry key by which Wine is known.
#pragma once

#include <windows.h>

/// Sets the key while it lives. The key is volatile: should it be left behind, it goes with the
/// server of the registry.
class WineKey {
public:
    WineKey() {
        for (std::size_t i = 0; i < 3; ++i) {
            HKEY key = nullptr;
            DWORD disposition = 0;
            if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, paths[i], 0, nullptr, REG_OPTION_VOLATILE,
                                KEY_READ, nullptr, &key, &disposition) == ERROR_SUCCESS) {
                RegCloseKey(key);
                created_[i] = disposition == REG_CREATED_NEW_KEY;
            }
        }
    }
    WineKey(const WineKey&) = delete;
    WineKey& operator=(const WineKey&) = delete;
    ~WineKey() {
        for (std::size_t i = 3; i-- > 0;) {
            if (created_[i]) {
                RegDeleteKeyW(HKEY_LOCAL_MACHINE, paths[i]);
            }
        }
    }

private:
    static constexpr const wchar_t* paths[] = {L"Software\\Wine", L"Software\\Wine\\Wine",
                                               L"Software\\Wine\\Wine\\Config"};
    bool created_[3] = {};
};
