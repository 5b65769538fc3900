// Default options of the sanitizer runtimes, compiled into every program of the sanitizer
// build. The runtimes call these functions before main; the environment variables
// (ASAN_OPTIONS, UBSAN_OPTIONS, LSAN_OPTIONS) are read after them and win.

extern "C" {

// Leaks are errors; use-after-return and initialisation-order bugs are looked for too.
const char* __asan_default_options() {
    return "detect_leaks=1:detect_stack_use_after_return=1:check_initialization_order=1:"
           "strict_init_order=1:strict_string_checks=1:detect_invalid_pointer_pairs=0";
}

// A stack for every report of undefined behaviour; the first one ends the program.
const char* __ubsan_default_options() { return "print_stacktrace=1:halt_on_error=1"; }

// Leaks may be suppressed only inside system libraries; the file says which and why.
const char* __lsan_default_options() { return "suppressions=" ARDEN_LSAN_SUPPRESSIONS ":print_suppressions=0"; }
}
