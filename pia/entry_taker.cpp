#include "pia/entry_taker.h"

/// Makes an input hand over entries for the time of one call.
class PiaEntryTaker::Handing {
public:
    Handing(PiaInput& input, PiaEntryTaker& taker) : input_(input) { input.entries_ = &taker; }
    ~Handing() { input_.entries_ = nullptr; }
    Handing(const Handing&) = delete;
    Handing& operator=(const Handing&) = delete;

private:
    PiaInput& input_;
};

bool PiaEntryTaker::open(PiaInput& input, const wchar_t* path) {
    const Handing handing(input, *this);
    return input.open(path);
}

bool PiaEntryTaker::openBytes(PiaInput& input, std::string_view file) {
    const Handing handing(input, *this);
    return input.openBytes(file);
}

bool PiaEntryTaker::openBody(PiaInput& input, std::string_view body,
                             const PiaReadOptions& options) {
    const Handing handing(input, *this);
    return input.openBody(body, options);
}

void PiaEntryTaker::takeAll(const PiaBlock& root) {
    const PiaItem* list = root.findItem(list_.text(), PiaItemType::Block);
    if (list == nullptr) {
        return;
    }
    for (const PiaItem* item : static_cast<const PiaBlock*>(list)->items) {
        if (item->type == PiaItemType::Block) {
            take(static_cast<const PiaBlock&>(*item));
        }
    }
}
