#include "soak/PlantedLeak.h"

#include "Platform.h"

#include <stdexcept>
#include <string>

void LeaveBehind(std::string_view kind) {
    constexpr SIZE_T smallBlock = 16;
    bool isLeft = kind == "none";
    if (kind == "handle") isLeft = CreateEventW(nullptr, FALSE, FALSE, nullptr) != nullptr;
    if (kind == "graphics") isLeft = CreateSolidBrush(RGB(1, 2, 3)) != nullptr;
    if (kind == "window") isLeft = CreateMenu() != nullptr;
    if (kind == "internet")
        isLeft = InternetOpenW(L"leak", INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0) != nullptr;
    if (kind == "block") isLeft = HeapAlloc(GetProcessHeap(), 0, smallBlock) != nullptr;
    if (!isLeft) throw std::runtime_error("no leak of the kind '" + std::string(kind) + "' can be planted");
}
