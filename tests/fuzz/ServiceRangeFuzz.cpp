/* Range headers, which anybody may send to the service. The first byte tells how many bytes of the size of
 * the file follow, at most 8; the rest is the header. */
#include "ByteRange.h"
#include "FuzzInput.h"

namespace {

bool IsDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/* Whether it is "bytes=", digits, "-" and digits, of which one side may be missing. */
bool IsRange(std::string_view header) {
    if (!header.starts_with("bytes=")) return false;
    header.remove_prefix(6);
    const size_t dash = header.find('-');
    if (dash == std::string_view::npos) return false;
    const std::string_view first = header.substr(0, dash);
    const std::string_view last = header.substr(dash + 1);
    return (IsDigits(first) || first.empty()) && (IsDigits(last) || last.empty()) && header.size() > 1;
}

void RequirePart(const ByteRange& range, uint64_t size) {
    Require(range.length > 0 && range.first < size, "a part lies in its file");
    Require(range.length <= size - range.first, "a part ends with its file at the latest");
    const uint64_t last = range.first + range.length - 1;
    const std::string header = "bytes=" + std::to_string(range.first) + '-' + std::to_string(last);
    Require(ByteRangeOf(header, size) == range, "a part that is asked for by its bytes is the same");
    if (last + 1 != size) return;
    Require(ByteRangeOf("bytes=" + std::to_string(range.first) + '-', size) == range,
            "so is one to the end of the file");
    Require(ByteRangeOf("bytes=-" + std::to_string(range.length), size) == range,
            "so are the last bytes of it");
}

class ServiceRange final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        FuzzInput input(bytes);
        uint64_t size = 0;
        const unsigned sizeBytes = input.TakeByte() % 9U;
        for (unsigned byte = 0; byte < sizeBytes; ++byte)
            size = size << 8U | input.TakeByte();
        const std::string header = input.TakeRest();
        const ByteRange range = ByteRangeOf(header, size);
        if (range.kind == RangeKind::part)
            RequirePart(range, size);
        else
            Require(range.first == 0 && range.length == 0, "what is no part has no bytes");
        // The last bytes of an empty file are all of it.
        const bool asksForPart = IsRange(header) && (size > 0 || !header.starts_with("bytes=-"));
        if (asksForPart) Require(range.kind != RangeKind::whole, "a range is not passed over");
        if (!IsRange(header))
            Require(range.kind == RangeKind::whole, "what is no range means the whole file");
    }
};

const bool isAdded = AddFuzzTarget<ServiceRange>("ServiceRange");

}  // namespace
