#include <platen/plotcfg.h>
#include <platen/print.h>
#include "print/page_bounds.h"
#include "print/take.h"

bool print_bridge::setBounds(CMediaNode& media, const wxSize& ppi, const wxRect& paper) {
    if (ppi.x <= 0 || ppi.y <= 0 || paper.width <= 0 || paper.height <= 0) {
        return false;
    }
    constexpr double millimetresPerInch = 25.4;
    const double scaleX = millimetresPerInch / ppi.x;
    const double scaleY = millimetresPerInch / ppi.y;
    const double width = paper.width * scaleX;
    const double height = paper.height * scaleY;
    const double llx = -paper.x * scaleX;
    const double lly = -paper.y * scaleY;
    // The margins of the other sides are not known; they count as the same.
    const double urx = width - 2 * llx;
    const double ury = height - 2 * lly;

    auto& description = media.size.mediaDescription;
    bool changed = false;
    take(media.actualPrintableBoundsLlx, llx, changed);
    take(media.actualPrintableBoundsLly, lly, changed);
    take(media.actualPrintableBoundsUrx, urx, changed);
    take(media.actualPrintableBoundsUry, ury, changed);
    take(description.printableBoundsLlx, llx, changed);
    take(description.printableBoundsLly, lly, changed);
    take(description.printableBoundsUrx, urx, changed);
    take(description.printableBoundsUry, ury, changed);
    take(description.mediaBounds.urx, width, changed);
    take(description.mediaBounds.ury, height, changed);
    description.printableArea = (ury - lly) * (urx - llx);
    return changed;
}

bool CMediaNode::setBounds(const wxPrinterDC* dc) {
    return dc != nullptr && dc->IsOk() &&
           print_bridge::setBounds(*this, dc->GetPPI(), dc->GetPaperRect());
}
