#include "frame/Paths.h"

namespace {

constexpr WideStringView separators = TEXT("/\\:");

}  // namespace

size_t FindLastOf(WideStringView path, WideStringView set) {
    return path.find_last_of(set);
}

WideString GetBaseName(WideStringView path) {
    const size_t separator = FindLastOf(path, separators);
    const size_t start = separator == WideStringView::npos ? 0 : separator + 1;
    const WideStringView name = path.substr(start);
    return WideString(name.substr(0, FindLastOf(name, TEXT("."))));
}

WideString GetFolderPart(WideStringView path) {
    const size_t separator = FindLastOf(path, separators);
    if (separator == WideStringView::npos) return TEXT(".");
    return WideString(path.substr(0, separator));
}
