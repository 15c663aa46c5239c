/* thicker FILE: gives pens 1 to 9 a line weight of 0.35 mm, or says why not. */
#include <platen/platen.h>

#include <stdio.h>

int main(int count, char** arguments) {
    platen_context* context = platen_context_create();
    platen_document* pens = platen_document_open(context, count == 2 ? arguments[1] : "");
    int done = pens != NULL && platen_style_set(pens, "1-9", "lineweight=0.35") &&
               platen_document_save(pens, NULL);
    if (!done) {
        fprintf(stderr, "%s\n", platen_context_error(context));
    }
    platen_document_destroy(pens);
    platen_context_destroy(context);
    return done ? 0 : 1;
}
