#include "Console.h"

namespace {

ssize_t Collect(void* cookie, const char* bytes, size_t size) {
    static_cast<std::string*>(cookie)->append(bytes, size);
    return static_cast<ssize_t>(size);
}

FILE* StreamInto(std::string& text) {
    FILE* const stream = fopencookie(&text, "w", {nullptr, Collect, nullptr, nullptr});
    if (stream != nullptr) setvbuf(stream, nullptr, _IONBF, 0);
    return stream;
}

}  // namespace

Console& Console::Current() {
    static Console& console = *new Console;
    return console;
}

Console::Console() {
    output_.stream = StreamInto(output_.text);
    errors_.stream = StreamInto(errors_.text);
}

FILE* Console::Stream(int number) {
    if (number == 1) return output_.stream;
    return number == 2 ? errors_.stream : nullptr;
}

void Console::Clear() {
    output_.text.clear();
    errors_.text.clear();
}

std::string Console::Output() {
    return output_.text;
}

std::string Console::Errors() {
    return errors_.text;
}
