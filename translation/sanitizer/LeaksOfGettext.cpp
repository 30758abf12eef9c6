/* gettext's library does not free what it has allocated for comments, as its own source says (gettext-po.c);
 * a sanitizer, which asks these two, looks for other leaks. */
// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizer's names
extern "C" {
const char* __lsan_default_suppressions();
const char* __lsan_default_options();
}

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libgettextpo";
}

/* Programs print what they have to say and nothing else. */
extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
// NOLINTEND(bugprone-reserved-identifier)
