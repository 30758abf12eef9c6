/* Text in ASCII, widened. */
#pragma once

#include <string>
#include <string_view>

inline std::wstring Widened(std::string_view text) {
    return {text.begin(), text.end()};
}
