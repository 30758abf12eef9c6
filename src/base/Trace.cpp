#include "base/Trace.h"

#include <algorithm>

#include "base/OwnedSystemFile.h"

namespace {

WCHAR tracePath[MAX_PATH + 16];
DWORD beginning = 0;  // ms, of GetTickCount

/* A line in the making, in ASCII. What no longer fits of an object is left out. */
class TraceLine {
public:
    void Add(char character) { text[size++] = character; }

    void Add(const char* characters) {
        for (; *characters != 0; ++characters)
            Add(*characters);
    }

    /* All but plain characters by their numbers: a tab or a line feed would spoil the columns. */
    void AddObject(const WCHAR* units) {
        for (; *units != 0 && *units != TEXT('?') && size < mostOfObject; ++units) {
            if (*units >= 0x20 && *units < 0x7F) {
                Add(static_cast<char>(*units));
            } else {
                Add("<U+");
                AddDigits(*units, 16, 4);
                Add('>');
            }
        }
    }

    void AddNumber(int64_t number) {
        if (number < 0) Add('-');
        const auto magnitude = static_cast<uint64_t>(number);
        AddDigits(number < 0 ? 0 - magnitude : magnitude, 10, 1);
    }

    /* The library's own codes are told apart by their highest digits. */
    void AddCode(DWORD code) {
        constexpr DWORD application = 0x20000000;
        if ((code & application) == 0) return AddDigits(code, 10, 1);
        Add("0x");
        AddDigits(code, 16, 8);
    }

    /* Opened for each line: what has been written survives whatever comes next. */
    void Append() const {
        const SystemFile file(CreateFileW(tracePath, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file) return;
        SetFilePointer(file.Get(), 0, nullptr, FILE_END);
        DWORD written = 0;
        WriteFile(file.Get(), text, size, &written, nullptr);
    }

private:
    void AddDigits(uint64_t number, unsigned base, int least) {
        char digits[20];
        int count = 0;
        for (; number != 0 || count < least; number /= base)
            digits[count++] = "0123456789ABCDEF"[number % base];
        while (count > 0)
            Add(digits[--count]);
    }

    static constexpr DWORD mostOfObject = 900;
    /* An object's last character by its number, two numbers of 64 bits, a code, tabs and the end. */
    static constexpr DWORD mostBehindObject = 80;

    char text[mostOfObject + mostBehindObject];
    DWORD size = 0;
};

void Append(const WCHAR* what, const WCHAR* object, int64_t result, DWORD code) {
    TraceLine line;
    line.AddNumber(static_cast<DWORD>(GetTickCount() - beginning));
    line.Add('\t');
    line.AddObject(what);
    line.Add('\t');
    if (object != nullptr) line.AddObject(object);
    line.Add('\t');
    line.AddNumber(result);
    line.Add('\t');
    line.AddCode(code);
    line.Add("\r\n");
    line.Append();
}

}  // namespace

void BeginTrace(HINSTANCE module) noexcept {
    const DWORD error = GetLastError();
    beginning = GetTickCount();
    // A path that is cut has no terminator of its own.
    WCHAR path[MAX_PATH + 1]{};
    DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
    // A path that fills the buffer has been cut: it names another file.
    if (length >= MAX_PATH) length = 0;
    while (length > 0 && path[length] != TEXT('.'))
        --length;
    if (length > 0) std::ranges::copy(TEXT(".trace.txt"), std::copy_n(path, length, tracePath));
    SetLastError(error);
    Trace(TEXT("load"), path, 1, 0);
}

void Trace(const WCHAR* what, const WCHAR* object, int64_t result, DWORD code) noexcept {
    const DWORD error = GetLastError();
    if (tracePath[0] != 0) Append(what, object, result, code);
    SetLastError(error);
}

void TraceCall(const WCHAR* what, const WCHAR* object, int64_t result, bool succeeded) noexcept {
    Trace(what, object, result, succeeded ? ERROR_SUCCESS : GetLastError());
}
