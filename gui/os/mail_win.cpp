#include "gui/os/mail_win.h"
// Behind the header, which brings windows.h as wxWidgets wants it.
#include <mapi.h>

#include <string>

#include <platen/utcore.h>

namespace wut {

namespace {

std::string ansiOf(const std::wstring& text) {
    std::string bytes;
    ut::convertToAnsi(text, bytes);
    return bytes;
}

}  // namespace

EMailStatus sendByMail(const ut::FileName& file, HWND parent, const wchar_t* library) {
    std::string path = ansiOf(file.getFullPath());
    std::string name = ansiOf(file.getFullName());
    if (isUnderWine()) {
        return MS_NoMail;
    }
    const ut::DynamicLibrary mail(library, ut::DynamicLibrary::Now);
    auto* const send = mail.function<MAPISENDMAIL>("MAPISendMail");
    if (send == nullptr) {
        return MS_NoMail;
    }

    std::string note = " ";
    MapiFileDesc attachment{};
    attachment.lpszPathName = path.data();
    attachment.lpszFileName = path.data();
    MapiMessage message{};
    message.lpszSubject = name.data();
    message.lpszNoteText = note.data();
    // Without a session of its own the service ignores what the bits say about reading.
    message.flFlags = 4;
    message.nFileCount = 1;
    message.lpFiles = &attachment;
    const ULONG result = send(0, reinterpret_cast<ULONG_PTR>(parent), &message,
                              MAPI_LOGON_UI | MAPI_NEW_SESSION | MAPI_DIALOG, 0);
    return result == SUCCESS_SUCCESS || result == MAPI_USER_ABORT ? MS_Sent : MS_Failed;
}

EMailStatus sendByMail(ut::FileName file, HWND parent) {
    return sendByMail(file, parent, L"MAPI32.DLL");
}

}  // namespace wut
