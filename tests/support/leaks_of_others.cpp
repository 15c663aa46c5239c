// Leaks that the leak checker is to leave out: memory that libraries of others keep.

// NOLINTNEXTLINE(bugprone-reserved-identifier): the checker looks for this name.
extern "C" const char* __lsan_default_suppressions();

const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n"
           // glibc's newlocale, when LOCPATH is set.
           "leak:argz_add_sep\n";
}
