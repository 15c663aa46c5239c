/*
 * Platen for C, and for languages that call C: plotter documents in, JSON and bytes out.
 *
 *     platen_context* context = platen_context_create();
 *     platen_document* pens = platen_document_open(context, "pens.ctb");
 *     if (pens == NULL ||
 *         !platen_style_set(pens, "1-9,250", "lineweight=0.35") ||
 *         !platen_document_save(pens, NULL)) {
 *         fprintf(stderr, "%s\n", platen_context_error(context));
 *     }
 *     platen_document_destroy(pens);
 *     platen_context_destroy(context);
 *
 * Text is UTF-8 and ends with a zero byte. Whatever a function named create, open or convert
 * returns, and every buffer, belongs to the caller, who gives it back to the destroy function of
 * its type; that takes NULL, too. What is passed in is only borrowed for the call. A document, a
 * list of papers and a buffer may outlive the context that they came from, but a failure of theirs
 * is noted there as long as it lives.
 *
 * Threads: a context, and all that came from it, belongs to one thread at a time. Different
 * contexts are independent of each other.
 *
 * Failure: functions that return a pointer return NULL, functions that return int return 0; then
 * platen_context_error says why. Nothing is thrown, and a change that fails changes nothing.
 *
 * Stability: functions are added, never changed or removed, while the name of the library stays the
 * same; platen_interface_version counts them.
 */
#ifndef PLATEN_PLATEN_H
#define PLATEN_PLATEN_H

/* This is C: NOLINTBEGIN(modernize-deprecated-headers) */
#include <stddef.h>
#include <stdint.h>
/* NOLINTEND(modernize-deprecated-headers) */

#if defined(PLATEN_C_STATIC) || defined(__wasm__)
#define PLATEN_C_API
#elif defined(_WIN32)
#if defined(PLATEN_C_BUILDING)
#define PLATEN_C_API __declspec(dllexport)
#else
#define PLATEN_C_API __declspec(dllimport)
#endif
#else
#define PLATEN_C_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* What these functions are: raised when some are added. */
#define PLATEN_INTERFACE_VERSION 1

/* Where failures are noted; all else is made from one. */
typedef struct platen_context platen_context;
/* A plotter file in memory. */
typedef struct platen_document platen_document;
/* The custom papers of a file and, for a configuration, of its PMP. */
typedef struct platen_papers platen_papers;
/* Bytes that a function returns; a text unless it says otherwise. */
typedef struct platen_buffer platen_buffer;

/* --- Versions and contexts --- */

/* "0.1.0": of the library that is loaded. Belongs to the library. */
PLATEN_C_API const char* platen_version(void);
/* PLATEN_INTERFACE_VERSION of the library that is loaded. */
PLATEN_C_API uint32_t platen_interface_version(void);

/* NULL when there is no memory. */
PLATEN_C_API platen_context* platen_context_create(void);
/* What came from it lives on, without a place for its failures. */
PLATEN_C_API void platen_context_destroy(platen_context* context);
/* Why the last call that failed did: one JSON object, schema "platen.error/1", with a "code" that
 * stays the same from release to release, a "message" and, where they are known, a "remedy", the
 * "place", the name that was "wanted" and those that are "present" instead. "" before any failure.
 * Belongs to the context, until the next call that fails. */
PLATEN_C_API const char* platen_context_error(const platen_context* context);
/* The largest body in bytes that is read; 256 MiB unless told. */
PLATEN_C_API void platen_context_set_max_body(platen_context* context, uint64_t bytes);

/* --- Buffers --- */

/* The bytes, with a zero byte after the last. They belong to the buffer. */
PLATEN_C_API const char* platen_buffer_data(const platen_buffer* buffer);
/* Their number, without that zero. */
PLATEN_C_API size_t platen_buffer_size(const platen_buffer* buffer);
/* NULL is fine. */
PLATEN_C_API void platen_buffer_destroy(platen_buffer* buffer);

/* --- Documents --- */

/* Reads a file in any form: compressed, JSON, or bare body text. Damage that can be tolerated is
 * no failure; platen_document_findings lists it. */
PLATEN_C_API platen_document* platen_document_open(platen_context* context, const char* path);
/* The same with a file's bytes. `path` says where they are from: the PMP of a configuration is
 * looked for there, and a save without a path goes there. May be NULL. */
PLATEN_C_API platen_document* platen_document_open_bytes(platen_context* context, const void* bytes,
                                                         size_t size, const char* path);
/* A new plot style table: `kind` is "ctb" or "stb", `preset` the name of a public standard such as
 * "iso-0.25", or NULL. */
PLATEN_C_API platen_document* platen_document_create_table(platen_context* context,
                                                           const char* kind, const char* preset);
/* A new plot configuration of a built-in device, such as "Print As PDF". */
PLATEN_C_API platen_document* platen_document_create_configuration(platen_context* context,
                                                                   const char* device);
/* The names of the built-in devices: schema "platen.devices/1". */
PLATEN_C_API platen_buffer* platen_devices(platen_context* context);
/* NULL is fine. What was not saved is lost. */
PLATEN_C_API void platen_document_destroy(platen_document* document);

/* "ctb", "stb", "pc3", "pmp", or "pia" for something else in a sound container. Belongs to the
 * library. */
PLATEN_C_API const char* platen_document_kind(const platen_document* document);
/* 1 when a save would write other bytes than were read or saved last. */
PLATEN_C_API int platen_document_is_changed(const platen_document* document);
/* The file as it would be saved. */
PLATEN_C_API platen_buffer* platen_document_bytes(platen_document* document);
/* Writes the file in one step: the old one stays until the new one is there, whole. `path` may be
 * NULL for where the document is from; that file is left alone when somebody else has written it
 * since. */
PLATEN_C_API int platen_document_save(platen_document* document, const char* path);

/* Everything that the document says: schema "platen.info/1". */
PLATEN_C_API platen_buffer* platen_document_info(platen_document* document);
/* What is wrong with it: schema "platen.check/1". */
PLATEN_C_API platen_buffer* platen_document_findings(platen_document* document);
/* Every item as it is stored, in order: schema "platen.items/1". */
PLATEN_C_API platen_buffer* platen_document_items(platen_document* document);

/* The value of the item at a path such as "media/number_of_copies", as text. */
PLATEN_C_API platen_buffer* platen_document_get(platen_document* document, const char* path);
/* Gives an item another value; one that ends in its type, as in "vendor/level:num", is added. NULL
 * as the value, with a path that ends in ":block", adds a block. */
PLATEN_C_API int platen_document_set(platen_document* document, const char* path,
                                     const char* value);
/* Removes the item at a path, with all that is in it. */
PLATEN_C_API int platen_document_remove(platen_document* document, const char* path);

/* The same document in another form or of another kind: `to` is "compressed", "json", "text", "ctb"
 * or "stb". `prefix` begins the names of styles that are made from colours; NULL for "Style".
 * `notes`, unless NULL, gets what became of colours and what is lost: schema "platen.convert/1". */
PLATEN_C_API platen_document* platen_document_convert(platen_document* document, const char* to,
                                                      const char* prefix, platen_buffer** notes);

/* --- Plot style tables --- */

/* The styles that `selection` names, with every setting: schema "platen.styles/1". A selection is
 * numbers from 1 as in "1-9,250", a name in which * and ? stand for others, or "=7" for all that
 * are equal to one; NULL for all. */
PLATEN_C_API platen_buffer* platen_styles(platen_document* document, const char* selection);
/* Sets all of them, as in "lineweight=0.35", or none. */
PLATEN_C_API int platen_style_set(platen_document* document, const char* selection,
                                  const char* assignment);
/* Named tables: adds a style, like another one unless `like` is NULL. */
PLATEN_C_API int platen_style_add(platen_document* document, const char* name, const char* like);
/* Named tables: removes the selected styles, unless a colour uses one of them or none would stay.
 */
PLATEN_C_API int platen_style_remove(platen_document* document, const char* selection);
/* Gives one style another name, which no other has. */
PLATEN_C_API int platen_style_rename(platen_document* document, const char* style,
                                     const char* name);
/* Gives the selected styles the settings of another one. */
PLATEN_C_API int platen_style_copy(platen_document* document, const char* from,
                                   const char* selection);
/* Named tables: lets one stand for all that are equal: schema "platen.merged-styles/1". */
PLATEN_C_API platen_buffer* platen_styles_merge_equal(platen_document* document);
/* The 27 line weights of the table in millimetres: schema "platen.lineweights/1". */
PLATEN_C_API platen_buffer* platen_lineweights(platen_document* document);
/* Sets one of them, 0 to 26: "0.35", "0.35mm" or "0.014in". All styles that have it follow. */
PLATEN_C_API int platen_lineweight_set(platen_document* document, uint32_t index,
                                       const char* value);
/* The table as CSV, for a spreadsheet. */
PLATEN_C_API platen_buffer* platen_table_csv(platen_document* document);
/* Takes the settings of a table that was edited in a spreadsheet; what has no column or row
 * stays. */
PLATEN_C_API int platen_table_read_csv(platen_document* document, const void* bytes, size_t size);
/* The settings that styles have, with what values look like: schema "platen.style-settings/1". */
PLATEN_C_API platen_buffer* platen_style_settings(platen_context* context);
/* The names and purposes of the presets: schema "platen.presets/1". */
PLATEN_C_API platen_buffer* platen_presets(platen_context* context);
/* What colours 1 to 255 look like, as "#rrggbb": schema "platen.palette/1". */
PLATEN_C_API platen_buffer* platen_palette(platen_context* context);

/* --- Charts --- */

/* What the pens of a table draw, or the papers of a configuration or of a PMP, to scale. `format`
 * is "svg", "html" (which prints true sizes) or "json", schema "platen.scene/1"; NULL for svg.
 * `options`, NULL for none, is a JSON object of any of "title", "sheet" ("A3", "594x420"),
 * "orientation" ("portrait", "landscape"), "gather" (true: equal styles share a row), "dpi"
 * (weights as such a device prints them) and "device_papers" (true: those of the built-in device,
 * too). */
PLATEN_C_API platen_buffer* platen_chart(platen_document* document, const char* format,
                                         const char* options);

/* --- Comparing --- */

/* How two documents differ by what they mean: schema "platen.diff/1". */
PLATEN_C_API platen_buffer* platen_compare(platen_document* before, platen_document* after);
/* The same for people: a line for each difference, equal changes gathered; nothing when equal. */
PLATEN_C_API platen_buffer* platen_compare_text(platen_document* before, platen_document* after);
/* Makes the changes that platen_compare gives, where they fit: schema "platen.apply/1" says what
 * became of them. */
PLATEN_C_API platen_buffer* platen_apply(platen_document* document, const char* changes);
/* Puts into `ours` what changed from `base` to `theirs`: schema "platen.merge-result/1". */
PLATEN_C_API platen_buffer* platen_merge(platen_document* base, platen_document* ours,
                                         platen_document* theirs);

/* --- Repairing --- */

/* Saves what can be saved of a damaged file. `path` as for platen_document_open_bytes. With
 * `safe_only` other than 0 only what is certain is mended. `report`, unless NULL, gets every
 * assumption and every loss, whether it succeeds or not: schema "platen.repair/1". */
PLATEN_C_API platen_document* platen_repair(platen_context* context, const void* bytes, size_t size,
                                            const char* path, int safe_only,
                                            platen_buffer** report);

/* --- Custom papers --- */

/* The custom papers of a plot configuration and its PMP, or of a PMP, in files: both may have to be
 * written. */
PLATEN_C_API platen_papers* platen_papers_open(platen_context* context, const char* path);
/* NULL is fine. What was not saved is lost. */
PLATEN_C_API void platen_papers_destroy(platen_papers* papers);
/* Schema "platen.paper-list/1". */
PLATEN_C_API platen_buffer* platen_papers_list(platen_papers* papers);
/* `units` is "mm", "in" or "px"; NULL for those of the paper or, for a new one, of the device.
 * `margins` are left, bottom, right, top; NULL for none or those that it has. */
PLATEN_C_API int platen_papers_add(platen_papers* papers, const char* name, double width,
                                   double height, const double* margins, const char* units);
/* Gives a paper other sides; a configuration that is set to it follows. */
PLATEN_C_API int platen_papers_resize(platen_papers* papers, const char* name, double width,
                                      double height, const double* margins, const char* units);
/* Gives a paper another name for people, which no other has. */
PLATEN_C_API int platen_papers_rename(platen_papers* papers, const char* name,
                                      const char* new_name);
/* Removes a paper by its name. */
PLATEN_C_API int platen_papers_remove(platen_papers* papers, const char* name);
/* Writes the files that are different, each whole or not at all. Schema "platen.papers-saved/1"
 * names them. */
PLATEN_C_API platen_buffer* platen_papers_save(platen_papers* papers);

#ifdef __cplusplus
}
#endif

#endif
