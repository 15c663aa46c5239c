#include <wx/string.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include <platen/gui_os.h>
#include "gui/os/text_file.h"

namespace wut {

namespace {

class PositionFileException {};

struct FileCloser {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

/// The number that `text` is, as files write it: with a point, whatever the locale has.
double numberOf(const std::wstring& text) {
    wxString number = text;
    const wxString point = std::localeconv()->decimal_point;
    if (point != "." && number.Replace(".", point) == 0 && number.Contains(point)) {
        throw PositionFileException();
    }
    double value = 0;
    if (!number.ToDouble(&value) || !std::isfinite(value)) {
        throw PositionFileException();
    }
    return value;
}

double nextNumber(std::FILE* file) {
    char line[2048];
    if (ut::nfgets(line, sizeof(line), file) == nullptr) {
        throw PositionFileException();
    }
    const std::string_view bytes = line;
    if (bytes.size() == sizeof(line) - 1) {
        // The line may go on, and a number that is cut in two would be two other ones.
        throw PositionFileException();
    }
    // Numbers are ASCII; any other byte becomes some character that is none.
    return numberOf(ut::removeSpaces(std::wstring(bytes.begin(), bytes.end()), "be"));
}

}  // namespace

bool readPositionFile(const OdString& path, double& a, double& b, double& c, double& d, double& e,
                      double& f) {
    const std::unique_ptr<std::FILE, FileCloser> file(openTextFile(path.text()));
    if (!file) {
        return false;
    }
    try {
        for (double* const number : {&c, &f, &e, &d, &a, &b}) {
            *number = nextNumber(file.get());
        }
    } catch (const PositionFileException&) {
        return false;
    }
    return true;
}

}  // namespace wut
