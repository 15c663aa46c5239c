/* A program without a C library, for compilers other than MinGW-w64: linked with platen_c.lib, it makes a
   table, changes it, and has its refusal of what is wrong. Its exit status says what did not hold. */
#include <platen/platen.h>

__declspec(dllimport) void __stdcall ExitProcess(unsigned status);

void start(void) {
    platen_context* context = platen_context_create();
    platen_document* pens = platen_document_create_table(context, "ctb", "iso-0.25");
    unsigned status = 0;
    if (platen_interface_version() < PLATEN_INTERFACE_VERSION) {
        status = 1;
    } else if (pens == NULL) {
        status = 2;
    } else if (!platen_style_set(pens, "1-9,250", "screening=50")) {
        status = 3;
    } else if (platen_style_set(pens, "1", "screening=200") ||
               platen_context_error(context)[0] == '\0') {
        status = 4;
    }
    platen_document_destroy(pens);
    platen_context_destroy(context);
    ExitProcess(status);
}
