#include <functional>
#include <map>
#include <string>
#include <string_view>

#include <platen/utcore.h>
#include "platform/utcore/environment.h"
#include "platform/utcore/settings_lock.h"

namespace ut {

namespace {

constexpr std::wstring_view productSetting = L"RegProduct";

using Settings = std::map<std::wstring, std::wstring, std::less<>>;

Settings& settings() {
    static Settings all;
    return all;
}

/// "PLATEN_PLOT_CFG_PATH" for "PlotCfgPath".
std::string variableFor(std::wstring_view name) {
    std::string variable = "PLATEN";
    for (const wchar_t character : name) {
        const bool capital = character >= L'A' && character <= L'Z';
        const bool small = character >= L'a' && character <= L'z';
        if (capital) {
            variable += '_';
        }
        if (capital || small) {
            variable += static_cast<char>(small ? character - L'a' + L'A' : character);
        }
    }
    return variable;
}

}  // namespace

std::wstring getSetting(std::wstring_view name) {
    const SettingsLock lock;
    const Settings& all = settings();
    const auto entry = all.find(name);
    return entry != all.end() ? entry->second : environmentVariable(variableFor(name));
}

void setSetting(std::wstring_view name, std::wstring_view value) {
    const SettingsLock lock;
    settings().insert_or_assign(std::wstring(name), std::wstring(value));
}

std::wstring Config::regProduct() {
    std::wstring name = getSetting(productSetting);
    return name.empty() ? L"Platen" : name;
}

void Config::setRegProduct(std::wstring_view name) { setSetting(productSetting, name); }

}  // namespace ut
