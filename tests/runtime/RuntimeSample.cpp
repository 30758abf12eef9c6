/* A DLL that does in small what C++ asks of an image's runtime. What its static objects do shows in the
 * simulated handheld's journal, as attempts to delete files of their names. */
#include "Platform.h"

#include <exception>
#include <memory>
#include <new>
#include <string>

namespace {

class StaticObject {
public:
    explicit StaticObject(const WCHAR* name) : lastWords(std::wstring(TEXT("destroyed ")) + name) {
        DeleteFileW((std::wstring(TEXT("made ")) + name).c_str());
    }
    StaticObject(const StaticObject&) = delete;
    StaticObject& operator=(const StaticObject&) = delete;
    ~StaticObject() {
        // An exception in a destructor that runs at the detach.
        try {
            throw 1;
        } catch (int) {
            DeleteFileW(lastWords.c_str());
        }
    }

private:
    std::wstring lastWords;
};

StaticObject first(TEXT("first"));
StaticObject second(TEXT("second"));

struct Base {
    virtual ~Base() = default;
};
struct Derived : Base {};
struct Other : Base {};

struct Error : std::exception {
    [[nodiscard]] const char* what() const noexcept override { return "Error"; }
};
struct SpecialError : Error {};

struct Counted {
    explicit Counted(int& counter) : count(counter) {}
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { ++count; }
    int& count;
};

void Throw(int kind) {
    switch (kind) {
        case 1:
            throw 5;
        case 2:
            throw SpecialError();
        case 3:
            throw std::wstring(300, L'x');
        case 4:
            (void)std::wstring(L"abc").at(3);
            break;
        case 5:
            (void)std::wstring().append(std::wstring().max_size() + 1, L'x');
            break;
        default:
            throw std::bad_alloc();
    }
}

void ThrowBelow(int depth, int& count) {
    const Counted counted(count);
    if (depth == 0) throw Error();
    ThrowBelow(depth - 1, count);
}

/* Throws and catches by itself when it is destroyed. */
struct Troubled {
    explicit Troubled(int& counter) : count(counter) {}
    Troubled(const Troubled&) = delete;
    Troubled& operator=(const Troubled&) = delete;
    ~Troubled() {
        try {
            const Counted counted(count);
            ThrowBelow(2, count);
        } catch (const Error&) {
            ++count;
        }
    }
    int& count;
};

void ThrowThroughTroubled(int depth, int& count) {
    const Troubled troubled(count);
    if (depth == 0) throw SpecialError();
    ThrowThroughTroubled(depth - 1, count);
}

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD reason, LPVOID /*reserved*/) {
    DeleteFileW(reason == DLL_PROCESS_ATTACH ? TEXT("attach") : TEXT("detach"));
    return TRUE;
}

/* The number of the clause that caught what Throw throws. */
int CaughtAs(int kind) {
    try {
        Throw(kind);
        return 0;
    } catch (int number) {
        return number == 5 ? 1 : -1;
    } catch (const Error& error) {
        return *error.what() == 'E' ? 2 : -2;
    } catch (const std::wstring& text) {
        return text.size() == 300 && text[299] == L'x' ? 3 : -3;
    } catch (const std::bad_alloc&) {
        return 4;
    } catch (const std::exception& error) {
        return *error.what() != 0 ? 5 : -5;
    } catch (...) {
        return -6;
    }
}

/* How many objects an exception destroys that crosses so many calls. */
int DestroyedOnTheWay(int depth) {
    int count = 0;
    try {
        ThrowBelow(depth, count);
    } catch (const std::exception&) {
        return count;
    }
    return -1;
}

/* 1 when an exception that is thrown on stays the same object. */
int Rethrown() {
    const void* original = nullptr;
    try {
        try {
            throw SpecialError();
        } catch (const Error& error) {
            original = &error;
            throw;
        }
    } catch (const SpecialError& error) {
        return &error == original ? 1 : 0;
    }
}

/* What is destroyed and caught on an exception's way through objects whose destructors throw and catch: five
 * for each. */
int CaughtOnTheWay(int depth) {
    int count = 0;
    try {
        ThrowThroughTroubled(depth, count);
    } catch (const SpecialError&) {
        return count;
    }
    return -1;
}

/* 1 when an exception that is thrown while another is handled takes its place, and that one is destroyed. */
int Replaced() {
    int destroyed = 0;
    struct First {
        explicit First(int& counter) : count(&counter) {}
        First(const First& other) = default;
        First& operator=(const First& other) = default;
        ~First() { ++*count; }
        int* count;
    };
    try {
        try {
            throw First(destroyed);
        } catch (const First&) {
            throw SpecialError();
        }
    } catch (const Error&) {
        return destroyed;
    }
    return -1;
}

/* How many exceptions, each thrown while the earlier ones are handled, were caught. */
int NestedWithoutMemory(int depth) {
    if (depth == 0) return 0;
    try {
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        return 1 + NestedWithoutMemory(depth - 1);
    }
}

int CallsOfLocalStatic() {
    static StaticObject local(TEXT("local"));
    static int calls = 0;
    return ++calls;
}

int WideTextWorks() {
    std::wstring text = L"one two three";
    text.replace(4, 3, L"twenty-two");
    text.insert(0, 40, L'*');
    const bool found =
        text.find(L"twenty") == 44 && text.find_last_of(L"*") == 39 && text.rfind(L'x') == text.npos;
    const bool ordered = std::wstring(L"a\xFFFF") > std::wstring(L"a\x7FFF") && text < L"+";
    return found && ordered && text.substr(40) == L"one twenty-two three" ? 1 : 0;
}

/* What stands at an address, also at one that no number may have. */
int NumberAt(const void* address) {
    return *static_cast<const int*>(address);
}

/* 1 when the compiler's arithmetic for what the processor lacks works. */
int NumbersWork(long long number, double factor, int divisor) {
    const long long quotient = number / divisor;
    const auto product = static_cast<long long>(static_cast<double>(quotient) * factor);
    return quotient * divisor + number % divisor == number && product == quotient * 3 / 2 ? 1 : 0;
}

/* 1 when a cast to a derived class tells objects apart. */
int CastFinds() {
    const std::unique_ptr<Base> derived = std::make_unique<Derived>();
    const std::unique_ptr<Base> other = std::make_unique<Other>();
    return dynamic_cast<Derived*>(derived.get()) != nullptr && dynamic_cast<Derived*>(other.get()) == nullptr
               ? 1
               : 0;
}
}
