#include "pia/entry_taker.h"

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
