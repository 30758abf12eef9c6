#include "frame/Paths.h"

namespace {

constexpr WideStringView separators = TEXT("/\\:");

}  // namespace

size_t FindLastOf(WideStringView path, WideStringView set) {
    return path.find_last_of(set);
}

WideString GetBaseName(WideStringView path) {
    // Without a separator all of the path: one more than npos is 0.
    const WideStringView name = path.substr(FindLastOf(path, separators) + 1);
    return WideString(name.substr(0, FindLastOf(name, TEXT("."))));
}

WideString GetFolderPart(WideStringView path) {
    const size_t separator = FindLastOf(path, separators);
    if (separator == WideStringView::npos) return TEXT(".");
    return WideString(path.substr(0, separator));
}
