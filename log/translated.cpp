#include "log/translated.h"

#include <atomic>

#include <platen/log.h>

namespace wut {

namespace {

// Set before any code runs: the built-in devices are described while the library is loaded.
constinit std::atomic<Translator> translatorInUse = nullptr;

}  // namespace

Translator registerTranslator(Translator translator) {
    return translatorInUse.exchange(translator);
}

std::wstring translated(const wchar_t* text) {
    const Translator translator = translatorInUse;
    return translator != nullptr ? translator(text) : text;
}

}  // namespace wut
