/* The tables are those that the compiler writes behind every function (.gcc_except_table, .ARM.extab). They
 * begin with the places of calls, in their order, each with an offset into a table of actions; the actions of
 * one call form a chain, and each is the number of a type in the table of types, which lies last and is
 * counted backwards. */
#include "Landing.h"

#include "ImageTypes.h"

#include <exception>

namespace {

/* Reads the numbers of variable length that the tables are made of. */
class Reader {
public:
    explicit Reader(const unsigned char* place) : next(place) {}

    unsigned Byte() { return *next++; }

    unsigned Unsigned() {
        unsigned value = 0;
        unsigned shift = 0;
        unsigned byte = 0;
        do {
            byte = Byte();
            value |= (byte & 0x7F) << shift;
            shift += 7;
        } while ((byte & 0x80) != 0);
        return value;
    }

    /* The highest bit that is given is the sign. */
    int Signed() {
        const unsigned char* const start = next;
        const unsigned value = Unsigned();
        const auto bits = 7 * static_cast<unsigned>(next - start);
        const bool isNegative = (next[-1] & 0x40) != 0;
        return static_cast<int>(isNegative && bits < 32 ? value | ~0U << bits : value);
    }

    const unsigned char* next;
};

/* Whether a clause for that type catches the exception; `object` is what it gets then. */
bool Catches(const std::type_info* type, const Exception& exception, void*& object) {
    if (type == nullptr) return true;  // catch (...)
    void* thrown = object;
    if (exception.type->__is_pointer_p()) thrown = *static_cast<void**>(thrown);
    if (!type->__do_catch(exception.type, &thrown, 1)) return false;
    object = thrown;
    return true;
}

/* The first clause of a chain of actions that catches the exception; 0 when there is none. */
int FindClause(const unsigned char* actions, const unsigned char* types, const Exception& exception,
               void*& object) {
    for (;;) {
        Reader reader(actions);
        const int number = reader.Signed();
        const unsigned char* const place = reader.next;
        const int distance = reader.Signed();
        // 0 stands for objects to be destroyed, negative numbers for what C++20 no longer has.
        if (number > 0 && Catches(TypeAt(types - 4 * number), exception, object)) return number;
        if (distance == 0) return 0;
        actions = place + distance;
    }
}

}  // namespace

Landing FindLanding(Exception& exception, const unsigned char* table, _Unwind_Ptr start,
                    _Unwind_Ptr returnAddress) {
    const _Unwind_Ptr call = returnAddress - 1 - start;
    constexpr unsigned omitted = 0xFF;
    Reader reader(table + 1);  // landings count from the function's start, so no other one is given
    const unsigned char* types = nullptr;
    if (reader.Byte() != omitted) {
        const unsigned size = reader.Unsigned();
        types = reader.next + size;
    }
    reader.Byte();  // the kind of numbers: Reader's
    const unsigned size = reader.Unsigned();
    const unsigned char* const actions = reader.next + size;
    while (reader.next < actions) {
        const _Unwind_Ptr first = reader.Unsigned();
        const _Unwind_Ptr length = reader.Unsigned();
        const _Unwind_Ptr landing = reader.Unsigned();
        const unsigned action = reader.Unsigned();
        if (call < first) break;
        if (call - first >= length) continue;
        if (landing == 0) return {};
        void* object = exception.Object();
        const int clause = action == 0 ? 0 : FindClause(actions + action - 1, types, exception, object);
        return {start + landing, clause, object};
    }
    std::terminate();
}
