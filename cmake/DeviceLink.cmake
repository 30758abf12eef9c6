# How images for Windows CE are compiled and linked: the project's own, and those of programs that use its
# package. Image.ld, the libraries and the entry point (-Wl,-e) come with each.
set(ORVANDE_DEVICE_COMPILE_OPTIONS -g -ffunction-sections -fdata-sections)
# The compiler takes it that constructors of static objects let no exception pass, but BeginImage stops them.
set(ORVANDE_DEVICE_CXX_OPTIONS -funwind-tables)
set(ORVANDE_DEVICE_LINK_OPTIONS -nostdlib -Wl,--wrap=malloc -Wl,--orphan-handling=error -Wl,--emit-relocs
  -Wl,--gc-sections -Wl,--pic-veneer -Wl,--target2=rel -Wl,--no-wchar-size-warning
  -Wl,--no-enum-size-warning -Wl,--fatal-warnings)
list(JOIN ORVANDE_DEVICE_COMPILE_OPTIONS " " ORVANDE_DEVICE_COMPILE_LINE)
list(JOIN ORVANDE_DEVICE_LINK_OPTIONS " " ORVANDE_DEVICE_LINK_LINE)
