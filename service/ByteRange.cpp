#include "ByteRange.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

constexpr ByteRange whole{};
constexpr ByteRange unsatisfiable{RangeKind::unsatisfiable, 0, 0};

/* None for anything but digits. A number beyond 64 bits becomes their largest one: no file reaches that
 * far. */
std::optional<uint64_t> NumberIn(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
    uint64_t number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() ? number : UINT64_MAX;
}

ByteRange LastBytes(uint64_t count, uint64_t size) {
    if (count == 0) return unsatisfiable;
    // No Content-Range can name a part of nothing.
    if (size == 0) return whole;
    const uint64_t length = std::min(count, size);
    return {RangeKind::part, size - length, length};
}

}  // namespace

ByteRange ByteRangeOf(std::string_view header, uint64_t size) {
    constexpr std::string_view unit = "bytes=";
    if (!header.starts_with(unit)) return whole;
    const std::string_view range = header.substr(unit.size());
    const size_t dash = range.find('-');
    if (dash == std::string_view::npos) return whole;
    const std::string_view end = range.substr(dash + 1);
    const std::optional<uint64_t> last = NumberIn(end);
    if (!last && !end.empty()) return whole;
    if (dash == 0) return last ? LastBytes(*last, size) : whole;
    const std::optional<uint64_t> first = NumberIn(range.substr(0, dash));
    if (!first) return whole;
    if (*first >= size || (last && *last < *first)) return unsatisfiable;
    return {RangeKind::part, *first, std::min(last.value_or(UINT64_MAX), size - 1) - *first + 1};
}
