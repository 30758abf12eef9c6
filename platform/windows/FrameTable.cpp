/* Where the compiler's unwinder finds the table of a function's frame. The compiler's own way registers the
 * tables of every module when it is loaded, and sorts them in memory of their own. This image has one table,
 * which the linker has put into one section, and exceptions are rare: it is read from its begin. */
#include <cstdint>
#include <cstring>

// The linker script's.
extern "C" const unsigned char firstFrame[];
extern "C" const unsigned char endOfFrames[];

namespace {

/* An entry of the table. One without an owner owns entries; the owner stands that many bytes before. */
struct Entry {
    uint32_t size; /* of what follows */
    uint32_t owner;
    int32_t function; /* its distance from here */
    uint32_t functionSize;
};

}  // namespace

/* What the unwinder wants to know besides: what distances in the table are counted from, of which only the
 * function is used. */
struct dwarf_eh_bases {
    void* text;
    void* data;
    const void* function;
};

/* Null: the address is in no function that exceptions could pass. */
extern "C" const void* _Unwind_Find_FDE(const void* address, dwarf_eh_bases* bases) {
    for (const unsigned char* place = firstFrame; place < endOfFrames;) {
        Entry entry;
        std::memcpy(&entry, place, sizeof entry);
        if (entry.size == 0) {
            place += sizeof entry.size;  // the end of one object file's part
            continue;
        }
        const auto* const function = place + offsetof(Entry, function) + entry.function;
        const auto distance = reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(function);
        if (entry.owner != 0 && distance < entry.functionSize) {
            *bases = {nullptr, nullptr, function};
            return place;
        }
        place += sizeof entry.size + entry.size;
    }
    return nullptr;
}
