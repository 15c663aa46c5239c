// How the sanitizers work in fuzzers: a long memory of freed blocks and of who allocated them takes
// more time than what is fuzzed.

extern "C" const char* __asan_default_options();

extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=8:malloc_context_size=6:detect_stack_use_after_return=0";
}
