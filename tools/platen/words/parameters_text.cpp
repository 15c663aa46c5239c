#include "tools/platen/words/parameters_text.h"

#include <ostream>

#include <platen/oda.h>
#include "tools/platen/words/config_text.h"
#include "tools/platen/words/paper_text.h"
#include "tools/platen/words/words.h"

namespace cli::words {

void describeParameters(const PlotModelParam& parameters, std::ostream& out) {
    const ModNode::MediaNode& device = parameters.mod.media;
    const UdmNode& user = parameters.udm;
    describeMeta(parameters, out);
    line(out, "limits",
         limitsInWords(device.sizeMaxX, device.sizeMaxY, OdDbPlotSettings::kMillimeters));
    if (!device.defaultSize.empty()) {
        line(out, "default paper", text(device.defaultSize));
    }
    if (device.size) {
        const PmpDescriptionNode none;
        describePapers("device papers", *device.size,
                       device.description ? *device.description : none, out);
    }
    line(out, "calibration",
         "x " + number(user.calibration.x) + ", y " + number(user.calibration.y));
    if (user.media) {
        line(out, "roll height",
             user.media->maxRollHeight == 0 ? "no limit"
                                            : number(user.media->maxRollHeight) + " mm");
        describePapers("user papers", user.media->size, user.media->description, out);
    } else {
        line(out, "user papers", "none");
    }
    if (parameters.hidden && parameters.hidden->media.size) {
        line(out, "hidden papers", std::to_string(parameters.hidden->media.size->papers.size()));
    }
}

}  // namespace cli::words
