/// Custom papers as the entries of a PMP's lists.
#pragma once

#include <platen/plotcfg.h>
#include <platen/pmp.h>

namespace plot_config {

/// The two entries of one paper. Their names are not unique yet, and the first does not name the
/// second.
struct PmpPaper {
    PmpSizeNode::PaperSize size;
    PmpDescriptionNode::PaperSizeDescription description;
};

PmpPaper toPmp(const CustomPaperSize& paper);

/// Null for a size entry whose description is missing: the paper then has no lengths.
CustomPaperSize fromPmp(const PmpSizeNode::PaperSize& size,
                        const PmpDescriptionNode::PaperSizeDescription* description);

}  // namespace plot_config
