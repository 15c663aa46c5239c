/// Memory for the styles of one table.
#pragma once

#include <memory_resource>
#include <new>

#include <platen/plotstyle.h>

namespace plot_style {

/// A table has hundreds of styles: one piece of memory for many costs less than one for each. It is
/// given back with the table; a style that is deleted before leaves a gap.
class StyleMemory {
public:
    StylePtr make() { return StylePtr(::new (place()) CPlotStyle); }
    StylePtr make(const CPlotStyle& model) { return StylePtr(::new (place()) CPlotStyle(model)); }

private:
    static constexpr std::size_t firstPiece = 32 * sizeof(CPlotStyle);

    void* place() { return memory_.allocate(sizeof(CPlotStyle), alignof(CPlotStyle)); }

    std::pmr::monotonic_buffer_resource memory_{firstPiece, std::pmr::new_delete_resource()};
};

}  // namespace plot_style
