// Linked into test programs whose threads share the ring buffer: tells the thread sanitizer, when the program
// is built with it, which races are accepted. Without the sanitizer nobody calls it.

extern "C" const char* __tsan_default_options();  // NOLINT(bugprone-reserved-identifier)

extern "C" const char* __tsan_default_options() {  // NOLINT(bugprone-reserved-identifier)
    return "suppressions=" ZANTO_TSAN_SUPPRESSIONS;
}
