/// Fields that take the values of print data.
#pragma once

#include <utility>

namespace print_bridge {

/// Gives the field the value; `changed` is set when that is another one, and stays otherwise.
template <class Field>
void take(Field& field, Field value, bool& changed) {
    if (field != value) {
        field = std::move(value);
        changed = true;
    }
}

}  // namespace print_bridge
