/// What to do about a finding, in terms of this command.
#pragma once

#include <platen/pia_report.h>

namespace cli::console {

/// The library's remedy, but for what is an option or a command here, or fixed.
inline const char* remedyOf(PiaCode code) {
    switch (code) {
        case PiaCode::FileTooLarge:
        case PiaCode::BodyTooLarge:
        case PiaCode::TooManyItems:
            return "if the file is trusted, allow more with --max-body, such as --max-body 1GB";
        case PiaCode::TooDeep:
            return "get the file again from its source; no plotter document nests blocks so deeply";
        case PiaCode::PrinterMoved:
            return "install the printer, or move the configuration with platen migrate";
        default:
            return piaCodeRemedy(code);
    }
}

}  // namespace cli::console
