#include "gui/os/folders_win.h"
// Behind the header, which brings windows.h as wxWidgets wants it.
#include <shlobj.h>
#include <wx/log.h>

namespace wut {

EFSVolumeKind volumeKind(unsigned driveType) {
    switch (driveType) {
        case DRIVE_REMOVABLE:
            return FSV_Removable;
        case DRIVE_FIXED:
            return FSV_Fixed;
        case DRIVE_CDROM:
            return FSV_CdRom;
        case DRIVE_REMOTE:
            return FSV_Remote;
        default:
            return FSV_Unknown;
    }
}

EFSVolumeKind getDriveType(const wchar_t* root) {
    const wxLogNull silence;
    return volumeKind(GetDriveTypeW(root));
}

OdString folderPathByCSIDL(int csidl) {
    wchar_t path[MAX_PATH] = L"";
    return SHGetFolderPathW(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, path) == S_OK ? path : L"";
}

}  // namespace wut
