/// Which printer takes the place of which.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cli::printers {

struct PrinterMove {
    std::wstring from;
    std::wstring to;
    /// How many configurations it applies to.
    std::size_t uses = 0;
};

/// The moves of a batch. Every configuration moves once at most, however the names chain.
class PrinterMap {
public:
    /// Takes "OLD=NEW", UTF-8; the first equals sign separates. Returns why it cannot, empty when
    /// it did.
    std::string add(const std::string& argument);
    /// The move from a printer, whose name is compared without regard to case, or null.
    PrinterMove* find(const std::wstring& printer);

    const std::vector<PrinterMove>& moves() const { return moves_; }

private:
    std::vector<PrinterMove> moves_;
};

}  // namespace cli::printers
