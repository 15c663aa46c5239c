#include <wx/string.h>

#include <platen/papers.h>
#include <platen/utcore.h>

namespace wut {

bool CmpCollatedNoCaseWx::operator()(const wxString& left, const wxString& right) const {
    return ut::strCmpAlphanum(left.wc_str(), right.wc_str(), true) < 0;
}

}  // namespace wut
