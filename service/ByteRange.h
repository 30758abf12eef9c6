/* Which part of a file a client asks for. */
#pragma once

#include <cstdint>
#include <string_view>

enum class RangeKind {
    whole,          // the header asks for nothing that would be answered in parts
    part,           // the bytes from `first` on, `length` of them
    unsatisfiable,  // nothing of what it asks for is in the file
};

struct ByteRange {
    RangeKind kind = RangeKind::whole;
    uint64_t first = 0;
    uint64_t length = 0;

    bool operator==(const ByteRange&) const = default;
};

/* Reads the value of a Range header for a file of `size` bytes: "bytes=0-9", "bytes=10-", "bytes=-5" (the
 * last 5). A range that reaches beyond the file ends with it. Several ranges, other units and what cannot be
 * read mean the whole file; a range that ends before it begins is unsatisfiable. */
ByteRange ByteRangeOf(std::string_view header, uint64_t size);
