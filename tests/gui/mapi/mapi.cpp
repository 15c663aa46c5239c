// A mail service for tests: writes down what it is asked to send, and answers what it is told to.
#include <windows.h>
// Needs windows.h.
#include <mapi.h>

#include <cstdlib>
#include <fstream>

extern "C" __declspec(dllexport) ULONG WINAPI
    MAPISendMail(LHANDLE session, ULONG_PTR window, lpMapiMessage message, FLAGS flags,
                 ULONG reserved) {
    std::ofstream record(_wgetenv(L"PLATEN_TEST_MAIL_RECORD"), std::ios::binary);
    record << "session " << session << " window " << window << " flags " << flags << " reserved "
           << reserved << '\n';
    record << "subject " << message->lpszSubject << '\n';
    record << "note <" << message->lpszNoteText << ">\n";
    record << "message flags " << message->flFlags << " recipients " << message->nRecipCount
           << " files " << message->nFileCount << '\n';
    const bool isZeroOtherwise =
        message->ulReserved == 0 && message->lpszMessageType == nullptr &&
        message->lpszDateReceived == nullptr && message->lpszConversationID == nullptr &&
        message->lpOriginator == nullptr && message->lpRecips == nullptr &&
        message->lpFiles->ulReserved == 0 && message->lpFiles->flFlags == 0 &&
        message->lpFiles->nPosition == 0 && message->lpFiles->lpFileType == nullptr;
    record << "zero otherwise " << isZeroOtherwise << '\n';
    record << "path " << message->lpFiles->lpszPathName << '\n';
    record << "name " << message->lpFiles->lpszFileName << '\n';
    return std::strtoul(std::getenv("PLATEN_TEST_MAIL_RESULT"), nullptr, 10);
}
