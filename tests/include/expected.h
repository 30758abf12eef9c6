/* Stops a compiler that is not what the test takes it for. */
#if _MSC_VER != EXPECTED_MSC_VER
#error "not the version that was asked for"
#endif
#if defined(_NATIVE_WCHAR_T_DEFINED) != defined(EXPECTED_NATIVE)
#error "not the kind of wchar_t that was asked for"
#endif
#if !defined(_WIN32)
#error "not for Windows"
#endif
