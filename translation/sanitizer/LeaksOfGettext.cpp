/* gettext's library keeps what it has allocated for comments, by its own account (gettext-po.c: "FIXME:
 * memory leak"); a sanitizer looks for other leaks. */
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libgettextpo";
}
