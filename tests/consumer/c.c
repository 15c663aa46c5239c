/* A program in C: it makes a table, changes it, finds out why something is refused, and saves it.
 */
#include <stdio.h>
#include <string.h>

#include <platen/platen.h>

static int expect(int holds, const char* what, const platen_context* context) {
    if (!holds) {
        fprintf(stderr, "%s: %s\n", what, platen_context_error(context));
    }
    return holds;
}

int main(void) {
    platen_context* context = platen_context_create();
    platen_document* pens = platen_document_create_table(context, "ctb", "iso-0.25");
    platen_document* before = platen_document_create_table(context, "ctb", "iso-0.25");
    platen_buffer* lines = NULL;
    int good = expect(platen_interface_version() >= PLATEN_INTERFACE_VERSION, "version", context) &&
               expect(pens != NULL && before != NULL, "create", context) &&
               expect(platen_style_set(pens, "1-9,250", "screening=50"), "set", context) &&
               expect(platen_document_save(pens, "pens.ctb"), "save", context);
    if (good) {
        lines = platen_compare_text(before, pens);
        good =
            expect(lines != NULL && strcmp(platen_buffer_data(lines),
                                           "Color 1-9, 250: screening 100 % -> 50 %\n") == 0,
                   "compare", context) &&
            expect(!platen_style_set(pens, "1", "screening=200"), "refuse", context) &&
            expect(strstr(platen_context_error(context), "value-invalid") != NULL, "why", context);
        printf("%s%s\n", platen_buffer_data(lines), platen_context_error(context));
    }
    platen_buffer_destroy(lines);
    platen_document_destroy(before);
    platen_document_destroy(pens);
    platen_context_destroy(context);
    return good ? 0 : 1;
}
