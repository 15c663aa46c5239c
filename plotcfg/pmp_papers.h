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

/// `known`: the PMP has an entry of the paper's global name already, whose name is not changed
/// where that can be helped.
PmpPaper toPmp(const CustomPaperSize& paper, bool known);

/// Null for a size entry whose description is missing: the paper then has no lengths.
CustomPaperSize fromPmp(const PmpSizeNode::PaperSize& size,
                        const PmpDescriptionNode::PaperSizeDescription* description);

}  // namespace plot_config
