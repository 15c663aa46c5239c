#include <platen/utcore_host.h>
#include "platform/utcore/key_state.h"

namespace ut {

bool isAltGrPressed() {
    // wxWidgets has no code for the key, but the toolkit below it, which is loaded with it, tells.
    const DynamicLibrary toolkit(L"libgdk-3.so.0", DynamicLibrary::Lazy);
    if (!toolkit.isLoaded()) {
        return false;
    }
    auto* const display = toolkit.function<void*()>("gdk_display_get_default");
    auto* const keymap = toolkit.function<void*(void*)>("gdk_keymap_get_for_display");
    auto* const modifiers = toolkit.function<unsigned(void*)>("gdk_keymap_get_modifier_state");
    if (display == nullptr || keymap == nullptr || modifiers == nullptr || display() == nullptr) {
        return false;
    }
    // The modifier that layouts use for their third level by convention.
    constexpr unsigned fifthModifier = 1u << 7;
    return (modifiers(keymap(display())) & fifthModifier) != 0;
}

}  // namespace ut
