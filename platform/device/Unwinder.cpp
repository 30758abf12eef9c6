/* Takes an exception up through the frames of its callers, as the ABI for ARM's exceptions describes them.
 * The compiler's own unwinder also knows floating-point registers, other languages and other processors, and
 * is three times as large.
 *
 * The linker's index (.ARM.exidx) leads from an address to the function's instructions for leaving its frame,
 * which restore the caller's registers, and to its table of landings. */
#include "Exceptions.h"
#include "Landing.h"

#include <algorithm>
#include <cstdint>

namespace {

/* The distance from itself to what it points to, in 31 bits. */
using Distance = uint32_t;

struct IndexEntry {
    Distance function;
    uint32_t instructions; /* themselves, a distance to them, or cannotBeLeft */
};
constexpr uint32_t cannotBeLeft = 1;
constexpr uint32_t isCompact = 0x80000000;

uintptr_t TargetOf(const Distance& distance) {
    const auto bytes = static_cast<int32_t>(distance << 1) >> 1;
    return reinterpret_cast<uintptr_t>(&distance) + static_cast<uintptr_t>(bytes);
}

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the linker script's names
extern "C" const IndexEntry __exidx_start[];
extern "C" const IndexEntry __exidx_end[];
// NOLINTEND(bugprone-reserved-identifier)

namespace {

/* Instructions are bytes in words, the highest first. */
class Instructions {
public:
    /* After the first ones, which `first` holds in its high bytes. */
    Instructions(uint32_t first, unsigned firstBytes, const uint32_t* rest, unsigned restWords)
        : word(first), bytes(firstBytes), next(rest), end(rest + restWords) {}

    static constexpr unsigned finish = 0xB0;

    unsigned Take() {
        if (bytes == 0) {
            if (next == end) return finish;
            word = *next++;
            bytes = 4;
        }
        const unsigned byte = word >> 24;
        word <<= 8;
        --bytes;
        return byte;
    }

    /* What lies behind them. */
    [[nodiscard]] const uint32_t* End() const { return end; }

private:
    uint32_t word;
    unsigned bytes;
    const uint32_t* next;
    const uint32_t* end;
};

Instructions InstructionsOf(const IndexEntry& entry, bool& hasLandings) {
    hasLandings = false;
    if ((entry.instructions & isCompact) != 0) return {entry.instructions << 8, 3, nullptr, 0};
    const auto* const words = reinterpret_cast<const uint32_t*>(TargetOf(entry.instructions));
    if ((words[0] & isCompact) != 0) {
        const bool isShort = (words[0] & 0x0F000000) == 0;
        if (isShort) return {words[0] << 8, 3, words + 1, 0};
        return {words[0] << 16, 2, words + 1, words[0] >> 16 & 0xFF};
    }
    hasLandings = true;  // words[0] is the distance to a function that would read them
    return {words[1] << 8, 3, words + 2, words[1] >> 24};
}

/* The registers of a function at one of its calls. The lines of assembly below know its form. */
struct Frame {
    uint32_t registers[16];

    uint32_t& StackPointer() { return registers[13]; }
    uint32_t& ReturnAddress() { return registers[15]; }

    void Pop(uint32_t mask) {
        const auto* stack = reinterpret_cast<const uint32_t*>(StackPointer());
        for (unsigned i = 0; i < 16; ++i) {
            if ((mask >> i & 1) != 0) registers[i] = *stack++;
        }
        if ((mask >> 13 & 1) == 0) StackPointer() = reinterpret_cast<uint32_t>(stack);
    }

    /* Follows one instruction. False: it is not known. */
    bool Follow(unsigned instruction, Instructions& rest) {
        const unsigned low = instruction & 0xF;
        if (instruction < 0x80) {
            const uint32_t distance = ((instruction & 0x3F) << 2) + 4;
            StackPointer() += instruction < 0x40 ? distance : 0 - distance;
        } else if (instruction < 0x90) {
            Pop((low << 8 | rest.Take()) << 4);
        } else if (instruction < 0xA0) {
            StackPointer() = registers[low];
        } else if (instruction < 0xB0) {
            constexpr uint32_t fromRegister4 = 0xFF0;
            Pop((fromRegister4 & ((0x20U << (low & 7)) - 1)) | (low >= 8 ? 1U << 14 : 0));
        } else if (instruction == 0xB1) {
            Pop(rest.Take());
        } else if (instruction == 0xB2) {
            StackPointer() += 0x204 + (TakeUnsigned(rest) << 2);
        } else {
            return false;
        }
        return true;
    }

    /* Becomes the frame of the caller. */
    bool Leave(Instructions instructions) {
        ReturnAddress() = 0;
        for (unsigned i = 0; (i = instructions.Take()) != Instructions::finish;) {
            if (!Follow(i, instructions)) return false;
        }
        if (ReturnAddress() == 0) ReturnAddress() = registers[14];
        return true;
    }

private:
    static uint32_t TakeUnsigned(Instructions& instructions) {
        uint32_t value = 0;
        for (unsigned shift = 0;; shift += 7) {
            const unsigned byte = instructions.Take();
            value |= (byte & 0x7F) << shift;
            if ((byte & 0x80) == 0) return value;
        }
    }
};

/* The entry of the function that a call returns into; null when its frame cannot be left. */
const IndexEntry* FindEntry(uintptr_t returnAddress) {
    const IndexEntry* const behind = std::upper_bound(
        __exidx_start, __exidx_end, returnAddress - 1,
        [](uintptr_t address, const IndexEntry& entry) { return address < TargetOf(entry.function); });
    if (behind == __exidx_start || behind[-1].instructions == cannotBeLeft) return nullptr;
    return behind - 1;
}

/* The exceptions for which objects are being destroyed; where the last one goes on. */
Exception* cleaning;

/* Goes up from a frame to the first where the exception has a landing, or a handler if only those count, and
 * makes it the frame. Without any, the landing leads nowhere. `isLeft`: the frame itself is not asked. */
Landing FindFrame(Exception& exception, Frame& frame, bool onlyHandlers, bool isLeft) {
    for (;; isLeft = false) {
        const IndexEntry* const entry = FindEntry(frame.ReturnAddress());
        if (entry == nullptr) return {};
        bool hasLandings = false;
        const Instructions instructions = InstructionsOf(*entry, hasLandings);
        if (hasLandings && !isLeft) {
            const auto* const table = reinterpret_cast<const unsigned char*>(instructions.End());
            const Landing landing =
                FindLanding(exception, table, TargetOf(entry->function), frame.ReturnAddress());
            if (onlyHandlers ? landing.clause != 0 : landing.address != 0) return landing;
        }
        if (!frame.Leave(instructions)) return {};
    }
}

}  // namespace

extern "C" {

[[noreturn]] void EnterFrame(Frame& frame);

/* Called by the lines of assembly below, with the frame of their caller. */

[[noreturn]] static void Land(Exception& exception, Frame& frame, bool isLeft) {
    const Landing landing = FindFrame(exception, frame, false, isLeft);
    if (landing.clause == 0) {
        exception.nextCleaning = cleaning;
        cleaning = &exception;
    }
    frame.registers[0] = reinterpret_cast<uint32_t>(&exception.unwinding);
    frame.registers[1] = static_cast<uint32_t>(landing.clause);
    frame.ReturnAddress() = landing.address;
    EnterFrame(frame);
}

/* Comes back when there is no handler. */
__attribute__((used)) void RaiseFrom(_Unwind_Exception* unwinding, Frame& frame) {
    Exception& exception = Exception::Of(unwinding);
    Frame handler = frame;
    const Landing landing = FindFrame(exception, handler, true, false);
    if (landing.address == 0) return;
    exception.caughtObject = landing.object;
    Land(exception, frame, false);
}

/* Goes on after a landing that only destroys objects. */
[[noreturn]] __attribute__((used)) void GoOnFrom(Frame& frame) {
    Exception& exception = *cleaning;
    cleaning = exception.nextCleaning;
    Land(exception, frame, true);
}

// The registers that a call may change need not be kept, but for the stack's and the return address.
#define SAVE_FRAME           \
    "mov ip, sp\n\t"         \
    "sub sp, sp, #64\n\t"    \
    "stmia sp, {r0-r11}\n\t" \
    "str ip, [sp, #52]\n\t"  \
    "str lr, [sp, #56]\n\t"  \
    "str lr, [sp, #60]\n\t"

__attribute__((naked)) _Unwind_Reason_Code _Unwind_RaiseException(_Unwind_Exception* /*unwinding*/) {
    asm(SAVE_FRAME
        "mov r1, sp\n\t"
        "bl RaiseFrom\n\t"
        "ldr lr, [sp, #56]\n\t"
        "add sp, sp, #64\n\t"
        "bx lr");
}

__attribute__((naked)) _Unwind_Reason_Code _Unwind_Resume_or_Rethrow(_Unwind_Exception* /*unwinding*/) {
    asm("b _Unwind_RaiseException");
}

__attribute__((naked)) void __cxa_end_cleanup() {
    asm(SAVE_FRAME
        "mov r0, sp\n\t"
        "b GoOnFrom");
}

__attribute__((naked)) void EnterFrame(Frame& /*frame*/) {
    asm("ldr ip, [r0, #52]\n\t"
        "ldr lr, [r0, #60]\n\t"
        "ldmia r0, {r0-r11}\n\t"
        "mov sp, ip\n\t"
        "bx lr");
}

/* The tables name functions that would read them, which are not needed here. */
void __gxx_personality_v0() {}
void __aeabi_unwind_cpp_pr0() {}
void __aeabi_unwind_cpp_pr1() {}
}
